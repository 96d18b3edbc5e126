#include "views/extremes.h"

// Compiled on the assumption that values are finite, so that several are compared at a time.
Extremes extremes_of(std::span<const float> values) {
  Extremes result = {values[0], values[0]};
  for (const float value : values) {
    result.smallest = value < result.smallest ? value : result.smallest;
    result.largest = value > result.largest ? value : result.largest;
  }
  return result;
}
