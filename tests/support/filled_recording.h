// A Recording for tests: times a minute apart, values that tell sample and channel.
#pragma once

#include "app/recording.h"
#include "app/times.h"

// Sample n of slot c is n + 100 c; so sample n is known by its value.
inline void fill(Recording& recording, int samples, int channels) {
  recording = Recording();
  recording.Title = QStringLiteral("Cold store");
  recording.RecorderName = QStringLiteral("Logger 4");
  recording.ChannelCount = static_cast<std::int16_t>(channels);
  recording.SampleCount = recording.ViewCount = samples;
  recording.ChannelInfo = {
      {{"1", "2", "3", "4"}, {"Air", "Humidity", "Soil", "Wall"}, {"C", "%RH", "C", "C"}}};
  for (int n = 0; n < std::min(samples, Recording::max_samples); ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time(2026, 3, 1, 8, n, 0));
    for (int c = 0; c < 4; ++c) recording.SampleValues(n, c) = static_cast<float>(n + 100 * c);
  }
}
