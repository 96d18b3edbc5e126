// A layer of a picture, made of vertical runs of pixels. It is filled column by column and read row
// by row, in the order in which an image lies in memory. Its cost depends on the number of runs,
// not on their length.
#pragma once

#include <QRgb>
#include <QSize>

#include <cstdint>
#include <span>
#include <vector>

#include "views/line_rows.h"

// Each pixel of `upper`, or of `lower` where the upper one is 0. All have the same length.
void lay_over(std::span<QRgb> target, std::span<const QRgb> upper, std::span<const QRgb> lower);

class PixelRuns {
 public:
  // Makes each run `line` pixels wide; `size` is the picture's.
  PixelRuns(QSize size, int line);

  // Runs must lie in the picture and must not overlap.
  void add(int column, Rows rows, QRgb colour);

  // The next row of the picture, from the top: the runs' colours, 0 where there is no run.
  std::span<const QRgb> next_row();

 private:
  // The change of a column's colour at a row. Each row has two lists of changes: where runs end,
  // applied first, and where runs begin.
  struct Change {
    int column;
    QRgb colour;
    std::int32_t next;
  };
  void add_change(std::vector<std::int32_t>& lists, int row, int column, QRgb colour);
  void apply(std::int32_t list);
  // Adds one pixel of width: each pixel of a run also covers its right, lower and lower right
  // neighbours where no run is.
  struct Widening {
    std::vector<QRgb> row;
    // This row and the one above it, widened only to the right.
    std::vector<QRgb> sideways;
    std::vector<QRgb> sideways_above;
  };
  static void widen(Widening& widening, std::span<const QRgb> row);

  std::vector<Change> changes_;
  std::vector<std::int32_t> ends_;
  std::vector<std::int32_t> beginnings_;
  std::vector<QRgb> row_;
  std::vector<Widening> widenings_;
  std::size_t next_ = 0;
};
