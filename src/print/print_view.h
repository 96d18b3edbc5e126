// Prints a view as one document on a Printout.
#pragma once

#include "print/printed_view.h"

class Printout;

// Both throw what the Printout throws, and then discard the document.
void print_graph(Printout& printout, const PrintedView& view);
// Prints the first `pages` pages of the sheet, or all if there are fewer.
void print_sheet(Printout& printout, const PrintedView& view, int pages);
