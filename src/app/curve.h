// A channel's evenly spaced samples and where their curve lies: what those who keep samples and
// those who draw them tell each other.
#pragma once

#include <QSizeF>

#include <cstddef>

// `count` values of one channel, `stride` floats apart; they stay the caller's.
struct CurveSamples {
  const float* first = nullptr;
  std::ptrdiff_t stride = 1;
  int count = 0;

  float operator[](int index) const { return first[index * stride]; }
};

// Where a curve lies, counted from the upper left corner of its graph in any unit.
struct CurvePlace {
  // Sample j lies at x = j / (span - 1) * width. A span beyond the number of samples leaves the
  // right part of the width empty.
  int span = 0;
  // The value `high` lies at y = shift, the value `low` at y = height + shift. Values outside lie
  // outside.
  QSizeF size;
  double high = 1;
  double low = 0;
  double shift = 0;
};
