// Names of files as commands take them from the file dialog.
#pragma once

#include <QString>

class Shell;

// Whether there is a file of exactly this name, a folder not being one.
bool file_exists(const QString& name);

// The name of the file that a command uses when the user has chosen `chosen`: what stands before
// its first "." anywhere in the path, folders included, and then `extension` (".qlx").
QString with_extension(const QString& chosen, const QString& extension);

// Shows the main window's file dialog and gives the name chosen; empty when the user cancelled or
// the program is ending.
QString choose_file_to_open(Shell& shell, const QString& filter, const QString& title);

// The same for a file to write. Asks before a file of exactly the chosen name is overwritten, and
// shows the dialog again on No. The name that is then written can be another one (see
// with_extension): that one is overwritten without a question, which is intended.
QString choose_file_to_save(Shell& shell, const QString& filter, const QString& title);
