// The curves of a graph, pixel column by pixel column: where many samples share a column only what
// remains visible in the end is written.
#pragma once

#include <span>

#include "views/graph_picture.h"
#include "views/line_rows.h"
#include "views/pixel_runs.h"

// Colour of each channel slot; 0 leaves the slot out.
using SlotColours = std::array<QRgb, Recording::max_channels>;

class CurveColumns {
 public:
  // The curves stay the caller's.
  CurveColumns(const GraphCurves& curves, const SlotColours& colours, const PictureSize& size);

  // Adds the next column, the leftmost first, to `picture`: the pixels that a line from each sample
  // to the next covers, one pixel wide, drawn sample after sample and within it channel after
  // channel.
  void draw_next(PixelRuns& picture);
  // Passes the next column; gives what the first curve covers there.
  Rows pass_next();

 private:
  struct Curve {
    std::span<const float> values;
    ValueRows row_of;
    QRgb colour;
    // From the last sample passed to the next one.
    LineRows line{};
    // Of the column at hand: the part of the line that enters it, of the one that leaves it, and
    // all that the curve covers; the row of each sample, where they are asked for.
    Rows entering = no_rows;
    Rows leaving = no_rows;
    Rows covered = no_rows;
    std::vector<int> rows{};
  };

  void advance();
  void find_covered_rows(Curve& curve);
  void draw_rows_of_one_curve(PixelRuns& picture);
  void draw_rows_of_several(PixelRuns& picture);
  void draw_open_rows_of(Rows line, QRgb colour, PixelRuns& picture);
  std::span<const float> in_column(const Curve& curve) const {
    return curve.values.subspan(first_, end_ - first_);
  }

  QSize size_;
  std::vector<int> columns_;
  std::vector<Curve> curves_;
  int column_ = -1;
  // The samples in the column at hand: from `first_` up to but without `end_`.
  std::size_t first_ = 0;
  std::size_t end_ = 0;
  // The rows of the column that several curves cover and none has got yet.
  std::vector<Rows> open_;
  std::vector<int> edges_;
};
