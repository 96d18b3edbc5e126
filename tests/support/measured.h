// What a recorder in software measured, against what the program made of it.
#pragma once

#include "app/numbers.h"
#include "app/recording.h"
#include "app/times.h"
#include "device/fixed_point.h"
#include "simulator/signal.h"

struct Measured {
  unsigned mask;  // bit c: channel c + 1 recorded
  QDateTime start;
  int interval_s;

  // Where `got` differs from `count` samples of the demo signal from sample `first` on; empty when
  // it does not.
  QString difference(const Recording& got, int count, int first = 0) const {
    if (got.SampleCount != count) return QString::number(got.SampleCount);
    for (int n = 0; n < count; ++n) {
      const QString time = stamp_text(start.addSecs(interval_s * (first + n)));
      bool same = got.SampleTimes(n) == time;
      int slot = 0;
      for (int channel = 0; channel < 4; ++channel) {
        if ((mask >> channel & 1) == 0) continue;
        const int raw = simulator::demo_signal(first + n, channel);
        const double value = fixed_point_value(static_cast<std::uint8_t>(raw % 256),
                                               static_cast<std::uint8_t>(raw / 256));
        same = same && got.SampleValues(n, slot++) == rounded_to_2_decimals(value);
      }
      if (!same || slot != got.ChannelCount) return "sample " + QString::number(n);
    }
    return {};
  }
};
