// A straight line as the run of rows that it covers in each pixel column.
#pragma once

#include <QSize>

#include <algorithm>
#include <cstdint>

// Rows from `first` to `last`, both included.
struct Rows {
  int first;
  int last;
  bool empty() const { return first > last; }
};
inline constexpr Rows no_rows = {0, -1};

inline Rows rows_between(int row, int other) {
  return {std::min(row, other), std::max(row, other)};
}
inline Rows common(Rows a, Rows b) {
  return {std::max(a.first, b.first), std::min(a.last, b.last)};
}
// The smallest run that contains both; an empty run adds nothing.
inline Rows hull(Rows a, Rows b) {
  if (a.empty()) return b;
  if (b.empty()) return a;
  return {std::min(a.first, b.first), std::max(a.last, b.last)};
}

struct PixelPoint {
  int column;
  int row;
};

// The line from one pixel to another in a later column. It has exactly the pixels that QPainter
// sets in a picture of this size with a pen of one pixel, not antialiased. Both columns lie in the
// picture; the rows may lie outside.
class LineRows {
 public:
  LineRows() = default;
  LineRows(PixelPoint from, PixelPoint to, QSize picture);

  // The rows of the picture that the line covers in this column; none if it does not come there.
  Rows in(int column) const;

 private:
  Rows flat_rows(int column) const;
  Rows steep_rows(int column) const;

  // A steep line is at column `across_` in row `first_` and moves by `step_` per row up to row
  // `last_`, in 65536ths of a pixel. In a flat line rows and columns change places.
  bool is_steep_ = false;
  std::int64_t across_ = 0;
  std::int64_t step_ = 0;
  int first_ = 0;
  int last_ = -1;
  int height_ = 0;
};
