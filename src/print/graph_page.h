// The printed page of the historical graph, drawn alike on the screen and on the printer.
#pragma once

#include <QSizeF>

#include "print/printed_view.h"

class QPainter;

// Draws header, scale columns, grid, curves and time labels (docs/print.md) on paper of `size`
// twips; the painter's unit is the twip. A sample outside the arrays ends the drawing at that
// point. A view of fewer than two samples has neither scales nor curves.
void draw_graph_page(QPainter& painter, QSizeF size, const PrintedView& view);

// The place of a graph on the page, in millimetres of portrait A4.
struct GraphPlace {
  std::vector<int> slots_shown;
  // The headings begin at `top`, one under the other; the frame follows.
  double top = 0;
  double frame_top = 0;
  double frame_height = 0;
  double frame_left = 0;
};

// The graphs of these channel slots below `header_lines` lines: one for all if `combined`, else one
// per slot, which share the height that is left.
std::vector<GraphPlace> graph_places(const std::vector<int>& slots_to_print, bool combined,
                                     int header_lines);
