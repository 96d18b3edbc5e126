// Smallest and largest of many values.
#pragma once

#include <span>

struct Extremes {
  float smallest;
  float largest;
};

// Of at least one value, none of them infinite or no number.
Extremes extremes_of(std::span<const float> values);
