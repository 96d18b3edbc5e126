// The export as a spreadsheet workbook.
#pragma once

#include <QString>

class Automation;
class ExportProgress;
class Recording;

// Has the spreadsheet application write `path`, a workbook with two sheets for the Recording
// (docs/export.md), and leaves the application running. Throws AutomationError for what it could
// not do, ExportStopped, BoundsError for counts beyond what a Recording holds; the workbook is then
// closed and not saved.
void export_workbook(Automation& office, const Recording& recording, const QString& path,
                     ExportProgress& progress);
