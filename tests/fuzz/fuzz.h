// The checks that the fuzzing targets share.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "base/errors.h"

inline void require(bool rule) {
  if (!rule) std::abort();
}

// Bad input may cause one of the program's own errors. Any other error is a finding.
template <class Statement>
bool holds(Statement statement) {
  try {
    statement();
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}
