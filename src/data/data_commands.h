// The File menu's Open, Save and Close: a Recording taken from disk, kept there, put away.
#pragma once

class QString;
class Shell;

// Lets the user choose a data file and makes it the Recording, shown in the Historical Data
// window. Messages "File Lose" for a name without a file and "File Read Error" for a file that is
// not a data file (docs/data-file.md); after the latter file handle 1 stays open and the Recording
// holds what was read before the fault.
void OpenDataFile(Shell& shell);

// The same for a file that was dropped onto the main window. Nothing is chosen, so exactly this
// file is opened, dots in its path included.
void OpenDroppedFile(Shell& shell, const QString& path);

// Lets the user choose a name and writes the Recording there. "File Exists ，Overwrite?" asks about
// a file of exactly that name; "Save File Error" tells of any failure, after which file handle 1
// stays open and the status bar as it was.
void SaveDataFile(Shell& shell);

// Closes the Historical Data window and empties the Recording; nothing is asked.
void CloseDataFile(Shell& shell);
