// What a recorder type says of its channels.
#pragma once

#include <QString>

#include <array>

#include "device/status.h"

class DeviceTable;

struct LiveChannels {
  int count = 0;
  std::array<QString, 4> names;
  std::array<QString, 4> units;

  bool operator==(const LiveChannels&) const = default;
};

// The channels of the recorder type in row `row`; none where the type has no usable count.
LiveChannels live_channels(const DeviceTable& table, int row);

// A line a channel: its name, its value as "0.00" and its unit.
QString reading_text(const LiveReading& reading, const LiveChannels& channels);
