// The data sheet on pages: which samples stand on which page, and the drawing of one.
#pragma once

#include <QSizeF>

#include "print/printed_view.h"

class QPainter;

// A run of samples of the view, counted from its start.
struct SheetRows {
  int first = 0;
  int count = 0;
};

// How a sheet of the view's samples is cut into pages of `size` twips. There is always a page,
// also for a view without samples; samples that the Recording does not hold are left out.
class SheetPages {
 public:
  SheetPages(const PrintedView& view, QSizeF size);

  int count() const;
  // The rows of page `page`, counted from 0.
  SheetRows rows(int page) const;

 private:
  int samples_;
  int rows_on_first_;
  int rows_on_others_;
};

// Draws page `page`, counted from 0, on paper of `size` twips, which are the painter's unit. The
// first one begins with the header of the graph page (docs/print.md).
void draw_sheet_page(QPainter& painter, QSizeF size, const PrintedView& view, int page);
