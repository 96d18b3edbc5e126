// A Recording to print: smooth curves, a channel each, with names, units and statistics.
#pragma once

#include <cmath>

#include "app/recording.h"
#include "app/times.h"

inline void fill_recording(Recording& recording, int samples, int channels) {
  recording.Title = QStringLiteral("Cold store 7");
  recording.ChannelCount = static_cast<std::int16_t>(channels);
  recording.SampleCount = recording.ViewCount = samples;
  recording.ChannelInfo = {
      {{"4", "3", "2", "1"}, {"Air", "Damp", "Soil", "Outer wall"}, {"C", "%RH", "C", "C"}}};
  recording.ChannelStats = {{{28, 38, 48, 58}, {12, 22, 32, 42}, {20, 30, 40, 50}}};
  for (int n = 0; n < samples; ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time(2026, 5, 12, 13, 45, 30).addSecs(60 * n));
    for (int c = 0; c < channels; ++c) {
      const double turn = 6.283 * (c + 1) * n / samples;
      recording.SampleValues(n, c) = static_cast<float>(20 + 10 * c + 8 * std::sin(turn + c));
    }
  }
}
