// The page of the historical graph, drawn alike on the screen and on the printer.
#pragma once

#include <QSizeF>

#include "print/printed_view.h"

class QPainter;

// Draws the page on paper of `size` twips, which are the painter's unit: header, scale columns,
// grid, curves and time labels (docs/print.md). A sample outside the arrays ends the drawing where
// it stands. With fewer than two samples there are neither scales nor curves.
void draw_graph_page(QPainter& painter, QSizeF size, const PrintedView& view);

// Where a graph stands on the page, in millimetres of A4 in portrait.
struct GraphPlace {
  std::vector<int> slots_shown;
  // Its headings begin here, one under the other; the frame follows.
  double top = 0;
  double frame_top = 0;
  double frame_height = 0;
  double frame_left = 0;
};

// The graphs of these channel slots below `header_lines` lines: one, or one a slot that share the
// height that is left.
std::vector<GraphPlace> graph_places(const std::vector<int>& slots_to_print, bool combined,
                                     int header_lines);
