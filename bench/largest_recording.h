// The largest possible Recording, which the benchmarks save, open and export.
#pragma once

#include <QDir>
#include <QFileInfo>

#include <cmath>

#include "app/recording.h"
#include "base/times.h"

// The template of a temporary folder, in memory if possible: disks are not compared.
inline QString memory_folder() {
  const QString memory = QStringLiteral("/dev/shm");
  return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
         QStringLiteral("/corvane-bench-XXXXXX");
}

// 30001 samples of four channels: a slow wave with some noise, in steps of 1/`steps` of the unit:
// 100 as for downloaded readings, 256 as for measured ones.
inline Recording largest_recording(int steps) {
  const auto reading = [steps](int n, int channel) {
    const double unrest = n * 7919 % 211 / 100.0;
    const double value = 20.0 * channel - 15.0 + 12.0 * std::sin(n / 2500.0) + unrest;
    return static_cast<float>(std::round(value * steps) / steps);
  };
  Recording recording;
  recording.Title = QStringLiteral("Cold store");
  recording.RecorderName = QStringLiteral("Logger 1");
  recording.ChannelCount = Recording::max_channels;
  for (std::size_t c = 0; c < Recording::max_channels; ++c) {
    recording.ChannelInfo[0][c] = QString::number(c + 1);
    recording.ChannelInfo[1][c] = QStringLiteral("Temperature");
    recording.ChannelInfo[2][c] = QStringLiteral("C");
  }
  recording.SampleCount = Recording::max_samples;
  for (int n = 0; n < Recording::max_samples; ++n) {
    recording.SampleTimes(n) = stamp_text(wall_time({2006, 5, 12, 13, 45, 30 + 60 * n}));
    for (int c = 0; c < Recording::max_channels; ++c) {
      recording.SampleValues(n, c) = reading(n, c);
    }
  }
  return recording;
}
