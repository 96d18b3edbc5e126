// What the fuzzing targets share: bytes taken off the front of an input, and rules that must hold.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/errors.h"

inline void require(bool rule) {
  if (!rule) std::abort();
}

// Bad input may end in one of the program's own errors; any other one is a finding.
template <class Statement>
bool holds(Statement statement) {
  try {
    statement();
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  int byte() {
    if (rest_.empty()) return 0;
    const char first = rest_.front();
    rest_.remove_prefix(1);
    return static_cast<unsigned char>(first);
  }
  QByteArray rest() const { return {rest_.data(), static_cast<qsizetype>(rest_.size())}; }

 private:
  std::string_view rest_;
};
