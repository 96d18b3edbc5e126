// Recordings for tests: made up, or measured by a simulated recorder.
#pragma once

#include "app/recording.h"
#include "base/numbers.h"
#include "base/times.h"
#include "device/fixed_point.h"
#include "simulator/signal.h"

// Samples a minute apart. Sample n of slot c has the value n + 100 c, which identifies it.
inline void fill(Recording& recording, int samples, int channels) {
  recording = Recording();
  recording.Title = QStringLiteral("Cold store");
  recording.RecorderName = QStringLiteral("Logger 4");
  recording.ChannelCount = static_cast<std::int16_t>(channels);
  recording.SampleCount = recording.ViewCount = samples;
  recording.ChannelInfo = {
      {{"1", "2", "3", "4"}, {"Air", "Humidity", "Soil", "Wall"}, {"C", "%RH", "C", "C"}}};
  for (int n = 0; n < std::min(samples, Recording::max_samples); ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time({2026, 3, 1, 8, n, 0}));
    for (int c = 0; c < 4; ++c) recording.SampleValues(n, c) = static_cast<float>(n + 100 * c);
  }
}

// For exports: two channels, samples a second apart, each value different from its neighbours.
inline Recording many_samples(int count) {
  Recording recording;
  fill(recording, count, 2);
  recording.ChannelInfo = {{{"1", "2"}, {"Temperature", "Humidity"}, {"C", "%RH"}, {}}};
  recording.ChannelStats = {{{4.6F, 61.2F}, {4.4F, 60.8F}, {4.5, 61.0}, {}}};
  for (int n = 0; n < count; ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time({2006, 5, 12, 0, 0, n}));
    for (int slot = 0; slot < Recording::max_channels; ++slot) {
      recording.SampleValues(n, slot) =
          static_cast<float>((n * 7 + slot * 1000) % 16000) / 100 - 40;
    }
  }
  return recording;
}

// What a simulated recorder measured, to compare with what the program made of it.
struct Measured {
  unsigned mask;  // bit c: channel c + 1 recorded
  QDateTime start;
  int interval_s;

  static double value(std::uint16_t raw) {
    return fixed_point_value(static_cast<std::uint8_t>(raw % 256),
                             static_cast<std::uint8_t>(raw / 256));
  }

  // Where `got` differs from `count` samples of the demo signal from sample `first` on; empty if
  // nowhere.
  QString difference(const Recording& got, int count, int first = 0) const {
    if (got.SampleCount != count) return QString::number(got.SampleCount);
    for (int n = 0; n < count; ++n) {
      bool same = got.SampleTimes(n) == stamp_text(start.addSecs(interval_s * (first + n)));
      int slot = 0;
      for (int channel = 0; channel < 4; ++channel) {
        if ((mask >> channel & 1) == 0) continue;
        const double expected = value(simulator::demo_signal(first + n, channel));
        same = same && got.SampleValues(n, slot++) == rounded_to_2_decimals(expected);
      }
      if (!same || slot != got.ChannelCount) return "sample " + QString::number(n);
    }
    return {};
  }
};
