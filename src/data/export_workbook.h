// Exports the Recording as a spreadsheet workbook.
#pragma once

#include <QString>

class Automation;
class ExportProgress;
class Recording;

// Has the spreadsheet application write `path`, a workbook with two sheets (docs/export.md), and
// leaves the application running. Throws AutomationError when the application fails, ExportStopped,
// and BoundsError when the sample count exceeds what a Recording can hold. The workbook is then
// closed unsaved.
void export_workbook(Automation& office, const Recording& recording, const QString& path,
                     ExportProgress& progress);
