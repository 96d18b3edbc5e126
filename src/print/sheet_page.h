// The drawing of a page of the data sheet.
#pragma once

#include <QSizeF>

class QPainter;
struct PrintedView;

// Draws page `page`, counted from 0, on paper of `size` twips, which are the painter's unit: a
// head, on the first page what the recording is, and the table (docs/print.md).
void draw_sheet_page(QPainter& painter, QSizeF size, const PrintedView& view, int page);
