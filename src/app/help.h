// Opens the help file.
#pragma once

// Starts the viewer for the help file in the program's folder, in a process of its own. Where the
// desktop knows no viewer for compiled help, its pages open in the web browser instead. Nothing is
// waited for and nothing is said when it does not start.
void open_help();
