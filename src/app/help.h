// Opens the manual.
#pragma once

// Starts the viewer for the help file in the program's folder, as a separate process. If the
// desktop knows no viewer for compiled help, opens the manual's pages in the web browser instead.
// Waits for nothing and shows no message if the viewer does not start.
void open_help();
