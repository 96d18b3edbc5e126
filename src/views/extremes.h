// Smallest and largest of many values.
#pragma once

#include <span>

struct Extremes {
  float smallest;
  float largest;
};

// Takes at least one value. All must be finite.
Extremes extremes_of(std::span<const float> values);
