// The file names that commands get from the file dialog.
#pragma once

#include <QString>

class Shell;

// Whether something of exactly this name exists that is not a folder.
bool file_exists(const QString& name);

// The name that a command uses when the user has chosen `chosen`: the part before the first "." of
// the whole path, folders included, followed by `extension` (".qlx").
QString with_extension(const QString& chosen, const QString& extension);

// Shows the main window's file dialog and returns the chosen name, empty when the user cancels or
// the program ends.
QString choose_file_to_open(Shell& shell, const QString& filter, const QString& title);

// Does the same for a file to write. Asks when a file of exactly the chosen name exists, and shows
// the dialog again on No. If with_extension() changes the name, the file of the changed name is
// overwritten without a question. That is intended.
QString choose_file_to_save(Shell& shell, const QString& filter, const QString& title);
