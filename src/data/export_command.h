// The File menu's Save As: writes the Recording as a text file, document or workbook.
#pragma once

class Automation;
class Shell;

// Lets the user choose a name and, by the file type, one of the three forms, and writes the
// Recording there as it was when the name was chosen (docs/export.md). Stops at the first failure
// without a message; status bar and progress then stay as they are. `office` supplies the office
// programs. While one works the windows respond, and a further document or workbook waits.
void ExportRecording(Shell& shell, Automation& office);
