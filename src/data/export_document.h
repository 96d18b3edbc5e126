// The export as a word-processor document.
#pragma once

#include <QString>

class Automation;
class ExportProgress;
class Recording;

// Has the word processor write `path`, a document with the lines of the text export
// (docs/export.md), and quits the word processor. Throws AutomationError for what it could not do,
// ExportStopped, BoundsError for counts beyond what a Recording holds; the document is then closed
// and not saved, and a word processor that was started for it quit.
void export_document(Automation& office, const Recording& recording, const QString& path,
                     ExportProgress& progress);
