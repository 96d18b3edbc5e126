// A straight line as the runs of rows that it covers in the pixel columns it passes.
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
// The rows from the upper end of both to the lower one; an empty run has no part in it.
inline Rows hull(Rows a, Rows b) {
  if (a.empty()) return b;
  if (b.empty()) return a;
  return {std::min(a.first, b.first), std::max(a.last, b.last)};
}

struct PixelPoint {
  int column;
  int row;
};

// The line from one pixel to another in a later column, with exactly the pixels that
// QPainter::drawLine sets with a pen of one pixel, not smoothed, in a picture of this size. Both
// columns lie in the picture; the rows may lie outside.
class LineRows {
 public:
  LineRows() = default;
  LineRows(PixelPoint from, PixelPoint to, QSize picture);

  // The rows of the picture that it covers in this column; none where it does not come.
  Rows in(int column) const;

 private:
  Rows flat_rows(int column) const;
  Rows steep_rows(int column) const;

  // A steep line stands at the column `across_` in row `first_` and moves by `step_` a row until
  // `last_`, in 65536ths of a pixel; a flat one likewise with rows for columns.
  bool is_steep_ = false;
  std::int64_t across_ = 0;
  std::int64_t step_ = 0;
  int first_ = 0;
  int last_ = -1;
  int height_ = 0;
};
