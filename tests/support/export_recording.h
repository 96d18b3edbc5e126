// Recordings for the tests of the exports.
#pragma once

#include "app/recording.h"
#include "app/times.h"

// Two channels, a second apart, whose values all differ from their neighbours'.
inline Recording many_samples(int count) {
  Recording recording;
  recording.Title = QStringLiteral("Cold store");
  recording.ChannelCount = 2;
  recording.SampleCount = count;
  recording.ChannelInfo = {{{"1", "2"}, {"Temperature", "Humidity"}, {"C", "%RH"}, {}}};
  recording.ChannelStats = {{{4.6F, 61.2F}, {4.4F, 60.8F}, {4.5, 61.0}, {}}};
  for (int n = 0; n < count; ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time(2006, 5, 12, 0, 0, n));
    for (int slot = 0; slot < Recording::max_channels; ++slot) {
      recording.SampleValues(n, slot) =
          static_cast<float>((n * 7 + slot * 1000) % 16000) / 100 - 40;
    }
  }
  return recording;
}
