// The File menu's Open, Save and Close: read, write and discard the Recording.
#pragma once

class QString;
class Shell;

// Lets the user choose a data file, reads it into the Recording and shows that in the Historical
// Data window. Says "File Lose" when there is no such file, and "File Read Error" when it is not a
// data file (docs/data-file.md). After a read error file handle 1 stays open and the Recording
// holds the fields before the fault.
void OpenDataFile(Shell& shell);

// Does the same with a file that was dropped onto the main window. Opens exactly this file: its
// path is not cut at a dot as a typed name is.
void OpenDroppedFile(Shell& shell, const QString& path);

// Lets the user choose a name and writes the Recording there. Asks "File Exists ，Overwrite?" when
// a file of exactly that name exists. Says "Save File Error" at any failure; the status bar then
// keeps its text, and file handle 1 stays open if it was opened.
void SaveDataFile(Shell& shell);

// Closes the Historical Data window and empties the Recording without a question.
void CloseDataFile(Shell& shell);
