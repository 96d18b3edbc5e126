// Reading the bytes of an answer (docs/protocol.md) within its bounds.
#pragma once

#include <QByteArray>

#include <cstdint>

#include "base/errors.h"
#include "device/fixed_point.h"

// Mode flags, in a properties answer and in the pattern that is sent.
inline constexpr std::uint8_t running_flag = 0x02;
inline constexpr std::uint8_t delayed_flag = 0x04;
inline constexpr std::uint8_t wrap_flag = 0x40;

// Where the fields of a properties answer begin; the start is year, month, day, hour, minute and
// second, a byte each.
inline constexpr int mode_flags_at = 3;
inline constexpr int channel_mask_at = 4;
inline constexpr int start_at = 5;
inline constexpr int delay_at = 11;
inline constexpr int interval_at = 13;
inline constexpr int all_data_at = 15;
inline constexpr int elapsed_at = 17;
inline constexpr int readings_at = 19;

// Byte `index` of an answer. Throws BoundsError beyond its end.
inline std::uint8_t byte_at(const QByteArray& answer, qsizetype index) {
  if (index < 0 || index >= answer.size()) throw BoundsError("beyond the answer");
  return static_cast<std::uint8_t>(answer[index]);
}

// The word whose low byte is byte `index`.
inline int word_at(const QByteArray& answer, qsizetype index) {
  return word(byte_at(answer, index), byte_at(answer, index + 1));
}

// The reading or limit whose low byte is byte `index`.
inline double value_at(const QByteArray& answer, qsizetype index) {
  return fixed_point_value(byte_at(answer, index), byte_at(answer, index + 1));
}
