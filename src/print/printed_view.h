// What is printed: the view of the historical graph, the channels chosen for it, and the lines
// that head every printout.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "app/recording.h"

class Page;

struct PrintedView {
  const Recording& recording;
  // First sample of the graph's view; recording.ViewCount says how many it has.
  std::int32_t start = 0;
  // By channel slot: to be printed, and the values at the top and the bottom edge of the graph.
  std::array<bool, Recording::max_channels> chosen{};
  std::array<float, Recording::max_channels> high{};
  std::array<float, Recording::max_channels> low{};
  // All curves in one graph, else a graph a channel.
  bool combined = true;
};

// The channel slots to print, those that the Recording does not have left out.
std::vector<int> printed_slots(const PrintedView& view);

// Draws title, channels, length and times of the view and a line a channel (docs/print.md). Gives
// the number of lines. Throws BoundsError at the line of a sample outside the arrays; the lines
// above it are drawn then.
int draw_header(const Page& page, const PrintedView& view);
// Where line `line` of the header stands, counted from 1, in millimetres.
constexpr double header_line_mm(int line) {
  return line * 5.5 + 10;
}
