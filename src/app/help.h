// Opens the help file.
#pragma once

// Starts the viewer for the help file in the program's folder, in a process of its own. Nothing
// is waited for and nothing is said when it does not start.
void open_help();
