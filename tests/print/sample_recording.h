// A Recording to print: smooth curves, a channel each, with names, units and statistics.
#pragma once

#include <cmath>

#include "app/recording.h"
#include "app/times.h"

inline void fill_recording(Recording& recording, int samples, int channels) {
  constexpr std::array names = {"Air", "Damp", "Soil", "Outer wall"};
  constexpr std::array units = {"C", "%RH", "C", "C"};
  recording.Title = QStringLiteral("Cold store 7");
  recording.ChannelCount = static_cast<std::int16_t>(channels);
  recording.SampleCount = recording.ViewCount = samples;
  for (int n = 0; n < samples; ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time(2026, 5, 12, 13, 45, 30).addSecs(60 * n));
    for (int c = 0; c < channels; ++c) {
      const double turn = 6.283 * (c + 1) * n / samples;
      recording.SampleValues(n, c) = static_cast<float>(20 + 10 * c + 8 * std::sin(turn + c));
    }
  }
  for (std::size_t c = 0; c < static_cast<std::size_t>(channels); ++c) {
    const double middle = 20 + 10 * static_cast<double>(c);
    recording.ChannelInfo[0][c] = QString::number(4 - c);
    recording.ChannelInfo[1][c] = QString::fromLatin1(names[c]);
    recording.ChannelInfo[2][c] = QString::fromLatin1(units[c]);
    recording.ChannelStats[0][c] = middle + 8;
    recording.ChannelStats[1][c] = middle - 8;
    recording.ChannelStats[2][c] = middle;
  }
}
