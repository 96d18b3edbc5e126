// The lines of text above a printed graph.
#pragma once

class Page;
class Paper;
struct PrintedView;

// Draws title, channels, length and times of the view and a line a channel (docs/print.md). Gives
// the number of lines. Throws BoundsError at the line of a sample outside the arrays; the lines
// above it are drawn then.
int draw_graph_header(const Paper& paper, const Page& page, const PrintedView& view);
// Where line `line` stands, counted from 1, in millimetres of A4 in portrait.
constexpr double header_line_mm(int line) {
  return line * 5.5 + 10;
}
