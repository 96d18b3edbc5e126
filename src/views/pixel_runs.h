// A layer of a picture, made of upright runs of pixels. It is collected column by column and read
// row by row, as the rows of an image lie in memory; what it costs depends on the runs' number,
// not on their length.
#pragma once

#include <QRgb>
#include <QSize>

#include <cstdint>
#include <span>
#include <vector>

#include "views/line_rows.h"

// The first colour of each pair that is not 0. All have the same length.
void lay_over(std::span<QRgb> target, std::span<const QRgb> upper, std::span<const QRgb> lower);

class PixelRuns {
 public:
  // Each run is to be drawn `line` pixels wide; `size` is the picture's.
  PixelRuns(QSize size, int line);

  // Runs lie in the picture and do not overlap.
  void add(int column, Rows rows, QRgb colour);

  // The next row of the picture, the uppermost first: the runs' colours, 0 where there is none.
  std::span<const QRgb> next_row();

 private:
  // From a row on, a column has another colour. Each row has a list of its changes: first those
  // where a run ends, then those where one begins.
  struct Change {
    int column;
    QRgb colour;
    std::int32_t next;
  };
  void add_change(std::vector<std::int32_t>& lists, int row, int column, QRgb colour);
  void apply(std::int32_t list);
  // One more pixel of width: each pixel of a run covers its right, lower and lower right neighbour
  // where no run is.
  struct Widening {
    std::vector<QRgb> row;
    // This row and the one above it, widened to the right alone.
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
