// Readings and limits as they travel on the wire: signed 8.8 fixed point, low byte first, in 1/256
// of the channel's unit (docs/protocol.md).
#pragma once

#include <cstdint>

// The value of a reading or limit. The raw number 32768 is +128.0, not -128.0, because that is what
// the recorder means by it.
constexpr double fixed_point_value(std::uint8_t low, std::uint8_t high) {
  const int raw = low + 256 * high;
  return (raw <= 32768 ? raw : raw - 65536) / 256.0;
}

constexpr int word(std::uint8_t low, std::uint8_t high) {
  return low + 256 * high;
}
