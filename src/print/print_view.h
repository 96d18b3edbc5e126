// Printing: one document on a printout, from a view.
#pragma once

#include "print/printed_view.h"

class Printout;

// Both throw PrinterError when the printout fails; the document is thrown away then.
void print_graph(Printout& printout, const PrintedView& view);
// The first `pages` pages of the sheet, or as many as there are.
void print_sheet(Printout& printout, const PrintedView& view, int pages);
