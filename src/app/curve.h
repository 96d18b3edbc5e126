// Draws the curve of evenly spaced samples: segment by segment, and where samples outnumber pixel
// columns as one vertical line a column that covers what the segments would, for a fraction of
// the work.
#pragma once

#include <QSizeF>

#include <cstddef>

class QPainter;

// `count` values of one channel, `stride` floats apart; they stay the caller's.
struct CurveSamples {
  const float* first = nullptr;
  std::ptrdiff_t stride = 1;
  int count = 0;

  float operator[](int index) const { return first[index * stride]; }
};

// Where a curve lies, in device pixels from the painter's origin.
struct CurvePlace {
  // Sample j lies at x = j / (span - 1) * width. A span beyond the number of samples leaves the
  // right part of the width empty; one of less than 2 draws nothing. One sample is a dot.
  int span = 0;
  // The value `high` lies at y = shift, the value `low` at y = height + shift. Values outside lie
  // outside; the painter's clip or the edge of its device cuts them off.
  QSizeF size;
  double high = 1;
  double low = 0;
  double shift = 0;
};

// Draws with the painter's pen, which must be cosmetic and one pixel wide, without antialiasing.
// The painter's coordinates must be device pixels.
void draw_curve(QPainter& painter, const CurveSamples& samples, const CurvePlace& place);
