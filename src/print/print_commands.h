// The commands Print View and Print, and the functions that the previews print with.
#pragma once

#include "print/printed_view.h"

class Shell;

// Print View: asks what to print and shows its preview.
void printview_Click(Shell& shell);
// Print: asks what to print and prints it at once.
void printdata_Click(Shell& shell);

// The view and the channels to print, as they are now.
PrintedView printed_view(Shell& shell);

// Print the graph, or the first `pages` pages of the sheet, as one document, under the hourglass
// pointer. Show "Default Printer Error" if there is no printer or it fails. Give whether the
// document was sent.
bool print_graph(Shell& shell);
bool print_sheet(Shell& shell, int pages);
