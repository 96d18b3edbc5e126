// A channel's evenly spaced samples: what those who keep samples give to those who draw them.
#pragma once

#include <cstddef>

// `count` values of one channel, `stride` floats apart; they stay the caller's.
struct CurveSamples {
  const float* first = nullptr;
  std::ptrdiff_t stride = 1;
  int count = 0;

  float operator[](int index) const { return first[index * stride]; }
};
