// Draws a page of the data sheet.
#pragma once

#include <QSizeF>

class QPainter;
struct PrintedView;

// Draws page `page`, counted from 0, on paper of `size` twips; the painter's unit is the twip. A
// page has a head, the first also the Recording's information, and the table (docs/print.md).
void draw_sheet_page(QPainter& painter, QSizeF size, const PrintedView& view, int page);
