// Bytes of frames as numbers, and back.
#pragma once

#include <QByteArray>

namespace simulator {

inline unsigned char byte_at(const QByteArray& bytes, qsizetype index) {
  return static_cast<unsigned char>(bytes.at(index));
}

// 16-bit number at `index`, low byte first.
inline int word_at(const QByteArray& bytes, qsizetype index) {
  return byte_at(bytes, index) + 256 * byte_at(bytes, index + 1);
}

// Appends the lowest 16 bits of `value`, low byte first; a negative value as two's complement.
inline void append_word(QByteArray& bytes, int value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>((value >> 8) & 0xFF);
}

// XOR of all bytes from `first` on: 0 over a frame that ends in its correct check byte.
inline unsigned char check_byte(const QByteArray& bytes, qsizetype first = 0) {
  unsigned char check = 0;
  for (qsizetype i = first; i < bytes.size(); ++i) check ^= byte_at(bytes, i);
  return check;
}

}  // namespace simulator
