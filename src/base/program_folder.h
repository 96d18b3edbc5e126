// The program's own folder, where the device file, the comN links, the help file and the automatic
// saves live.
#pragma once

#include <QString>

// Absolute path of the executable's folder, without a separator at its end. Tests set another one.
QString program_folder();
void set_program_folder(const QString& folder);

// The folder "Corvane" among the user's documents, made if it is not there: for what the program
// shall keep and its own folder does not take.
QString documents_folder();
