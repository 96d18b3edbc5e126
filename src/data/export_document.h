// Exports the Recording as a word-processor document.
#pragma once

#include <QString>

class Automation;
class ExportProgress;
class Recording;

// Has the word processor write the lines of the text export to the document `path`
// (docs/export.md), then quits the word processor. Throws AutomationError when the word processor
// fails, ExportStopped, and BoundsError when the sample count exceeds what a Recording can hold.
// The document is then closed unsaved, and a word processor that was started for it quits.
void export_document(Automation& office, const Recording& recording, const QString& path,
                     ExportProgress& progress);
