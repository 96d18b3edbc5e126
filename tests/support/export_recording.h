// Recordings for the tests of the exports.
#pragma once

#include "app/recording.h"

// Two channels, three samples, with their statistics.
inline Recording cold_store() {
  Recording recording;
  recording.Title = QStringLiteral("Cold store");
  recording.ChannelCount = 2;
  recording.SampleCount = 3;
  recording.ChannelInfo = {{{"1", "2"}, {"Temperature", "Humidity"}, {"C", "%RH"}, {}}};
  recording.ChannelStats = {{{4.6F, 61.2F}, {4.4F, 60.8F}, {4.5, 61.0}, {}}};
  const float values[3][2] = {{4.5F, 61.2F}, {4.6F, 61.0F}, {4.4F, 60.8F}};
  for (int n = 0; n < 3; ++n) {
    recording.SampleTimes(n) = QStringLiteral("2006-05-12 13:4%1:30").arg(5 + n);
    for (int slot = 0; slot < 2; ++slot) recording.SampleValues(n, slot) = values[n][slot];
  }
  return recording;
}

// The same with `count` samples, a second apart, whose values all differ from their neighbours'.
inline Recording many_samples(int count) {
  Recording recording = cold_store();
  recording.SampleCount = count;
  for (int n = 0; n < count; ++n) {
    const int second = n % 86400;
    recording.SampleTimes(n) = QStringLiteral("2006-05-%1 %2:%3:%4")
                                   .arg(12 + n / 86400, 2, 10, QChar(u'0'))
                                   .arg(second / 3600, 2, 10, QChar(u'0'))
                                   .arg(second / 60 % 60, 2, 10, QChar(u'0'))
                                   .arg(second % 60, 2, 10, QChar(u'0'));
    for (int slot = 0; slot < Recording::max_channels; ++slot) {
      recording.SampleValues(n, slot) =
          static_cast<float>((n * 7 + slot * 1000) % 16000 - 4000) / 100;
    }
  }
  return recording;
}
