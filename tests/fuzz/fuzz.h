// What the fuzzing targets share: rules that must hold.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "base/errors.h"

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
