// A view of one channel's samples, passed from the code that keeps them to the code that draws.
#pragma once

#include <cstddef>

// `count` values of one channel, `stride` floats apart. The caller owns them.
struct CurveSamples {
  const float* first = nullptr;
  std::ptrdiff_t stride = 1;
  int count = 0;

  float operator[](int index) const { return first[index * stride]; }
};
