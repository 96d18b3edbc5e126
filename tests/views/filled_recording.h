// A Recording for the views' tests: times a minute apart, values that tell sample and channel.
#pragma once

#include "app/recording.h"
#include "app/times.h"

// Sample n of slot c is n + 100 c; so sample n is known by its value.
inline void fill(Recording& recording, int samples, int channels) {
  constexpr std::array names = {"Air", "Humidity", "Soil", "Wall"};
  constexpr std::array units = {"C", "%RH", "C", "C"};
  recording = Recording();
  recording.Title = QStringLiteral("Cold store");
  recording.RecorderName = QStringLiteral("Logger 4");
  recording.ChannelCount = static_cast<std::int16_t>(channels);
  recording.SampleCount = samples;
  recording.ViewCount = 128;
  for (std::size_t c = 0; c < 4; ++c) {
    recording.ChannelInfo[0][c] = QString::number(c + 1);
    recording.ChannelInfo[1][c] = QString::fromLatin1(names[c]);
    recording.ChannelInfo[2][c] = QString::fromLatin1(units[c]);
  }
  for (int n = 0; n < std::min(samples, Recording::max_samples); ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time(2026, 3, 1, 8, n, 0));
    for (int c = 0; c < 4; ++c) recording.SampleValues(n, c) = static_cast<float>(n + 100 * c);
  }
}
