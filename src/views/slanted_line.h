// Runs of rows in a pixel column, and a line between two neighbouring columns as two of them.
#pragma once

#include <algorithm>

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
inline Rows hull(Rows a, Rows b) {
  return {std::min(a.first, b.first), std::max(a.last, b.last)};
}

// The rows that a line covers in the column where it starts and in the next one, where it ends.
struct SlantedLine {
  Rows left;
  Rows right;
};

// The line from `row` to `next_row`, with the pixels that QPainter::drawLine sets for it in an
// image that holds all of it.
SlantedLine slanted_line(int row, int next_row);
