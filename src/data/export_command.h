// The File menu's Save As: the Recording as a text file, a word-processor document or a workbook.
#pragma once

class Automation;
class Shell;

// Lets the user choose a name and, by the file type, one of the three forms, and writes the
// Recording there as it was when the name was chosen (docs/export.md). Stops at the first failure,
// without a message: status bar and progress then stay as they were. Office programs come from
// `office`; while one works the windows stay alive, and a further Save As does nothing.
void ExportRecording(Shell& shell, Automation& office);
