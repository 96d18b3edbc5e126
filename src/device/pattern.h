// The recording pattern as "Properties Set" sends it. docs/protocol.md has its bytes.
#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <cstdint>

#include "device/properties.h"

// The settings that the user has made in the window.
struct PatternSettings {
  StartupType startup_type = StartupType::stop;
  bool wrap = false;
  // Which of channels 1..4 take part in recording.
  std::array<bool, 4> channels{};
  qint64 startup_delay = 0;    // seconds, 0..32767
  qint64 record_interval = 1;  // seconds, 0..32767
  QString all_data;            // samples of the pattern, 0..65535, as typed
};

using PatternFrame = std::array<std::uint8_t, 15>;

// Writes bytes 0..13 of `pattern`, in order. Bytes 2..7, the recorder's clock, become `now`; for
// "Stop!" they keep their values. An interval of 0 seconds is sent as low byte 255 and high byte 0.
// Throws ConversionError for a number outside its range, a text that is not a number, and a year
// outside 2000..2255; the bytes before the failing one are then already written.
void encode_pattern(const PatternSettings& settings, const QDateTime& now, PatternFrame& pattern);

// Bit 3 of the first byte, by which "Properties Set" decides on a separate start or stop.
constexpr bool requests_start(const PatternFrame& pattern) {
  return (pattern[0] & 0x08) != 0;
}
