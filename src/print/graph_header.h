// The lines of text above a printed graph.
#pragma once

class Page;
class Paper;
struct PrintedView;

// Draws title, channels, length and times of the view and one line per channel (docs/print.md).
// Gives the number of lines. Throws BoundsError at the line of a sample outside the arrays; the
// lines above it are then drawn.
int draw_graph_header(const Paper& paper, const Page& page, const PrintedView& view);
// The top of line `line`, counted from 1, in millimetres of portrait A4.
constexpr double header_line_mm(int line) {
  return line * 5.5 + 10;
}
