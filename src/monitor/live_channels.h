// The names and units of a recorder type's channels.
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

// The channels of the recorder type in row `row`; none if the type has no usable channel count.
LiveChannels live_channels(const DeviceTable& table, int row);

// One line for each channel: its name, its value as "0.00" and its unit.
QString reading_text(const LiveReading& reading, const LiveChannels& channels);
