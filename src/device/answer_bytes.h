// Reads the bytes of an answer (docs/protocol.md) within its bounds. Only this folder knows where
// the fields of an answer lie.
#pragma once

#include <QByteArray>

#include <cstdint>

#include "base/errors.h"
#include "device/fixed_point.h"

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
