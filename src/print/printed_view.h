// What is printed: the view of the historical graph and the channels chosen for it.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <vector>

#include "app/recording.h"

struct PrintedView {
  const Recording& recording;
  // The first sample of the graph's view; recording.ViewCount is the number of its samples.
  std::int32_t start = 0;
  // Per channel slot: whether to print it, and the values at the graph's top and bottom edges.
  std::array<bool, Recording::max_channels> chosen{};
  std::array<float, Recording::max_channels> high{};
  std::array<float, Recording::max_channels> low{};
  // True: all curves in one graph; false: one graph per channel.
  bool combined = true;
  // The date and time of printing.
  QString printed = {};
};

// The channel slots to print, without those that the Recording does not have.
std::vector<int> printed_slots(const PrintedView& view);

// The number of the view's samples that the Recording holds.
int printed_samples(const PrintedView& view);
