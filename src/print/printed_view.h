// What is printed: the view of the historical graph and the channels chosen for it.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <vector>

#include "app/recording.h"

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
  // The date and time of printing.
  QString printed = {};
};

// The channel slots to print, those that the Recording does not have left out.
std::vector<int> printed_slots(const PrintedView& view);

// The number of the view's samples that the Recording holds.
int printed_samples(const PrintedView& view);
