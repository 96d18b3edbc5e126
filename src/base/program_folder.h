// The program's own folder, which holds the device file, the comN links, the help file and the
// automatic saves.
#pragma once

#include <QString>

// Absolute path of the executable's folder, without a trailing separator. Tests set another one.
QString program_folder();
void set_program_folder(const QString& folder);

// The folder "Corvane" among the user's documents, made if it is missing. It takes the files that
// the program must keep but cannot write into its own folder.
QString documents_folder();
