// The answer to a status request: the battery and the present readings.
#pragma once

#include <QByteArray>

#include <array>

// One value for each channel, in its unit. Channels that the recorder does not have stay 0.
using LiveReading = std::array<float, 4>;

struct RecorderStatus {
  double battery_volts = 0;
  LiveReading readings{};

  // At least 2.5 V.
  bool battery_ok() const { return battery_volts >= 2.5; }
};

// Decodes a whole answer; its length says how many channels there are. Throws BoundsError for one
// of fewer than 5 bytes.
RecorderStatus decode_status(const QByteArray& answer);
