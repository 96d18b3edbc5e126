#include "monitor/live_channels.h"

#include <QStringList>

#include "base/numbers.h"
#include "device/device_table.h"

LiveChannels live_channels(const DeviceTable& table, int row) {
  LiveChannels channels;
  channels.count = table.channel_count_or_none(row);
  for (int c = 0; c < channels.count; ++c) {
    const auto channel = static_cast<std::size_t>(c);
    channels.names[channel] = table.channel_name(row, c);
    channels.units[channel] = table.channel_unit(row, c);
  }
  return channels;
}

QString reading_text(const LiveReading& reading, const LiveChannels& channels) {
  QStringList lines;
  for (std::size_t c = 0; static_cast<int>(c) < channels.count; ++c) {
    lines << channels.names[c] + u' ' + fixed2(reading[c]) + u' ' + channels.units[c];
  }
  return lines.join(u'\n');
}
