// Draws the curves of a graph column by column. Where many samples share a pixel column, it writes
// only the pixels that remain visible.
#pragma once

#include <span>

#include "views/graph_picture.h"
#include "views/line_rows.h"
#include "views/pixel_runs.h"

// Colour of each channel slot; 0 leaves the slot out.
using SlotColours = std::array<QRgb, Recording::max_channels>;

class CurveColumns {
 public:
  // Refers to `curves`, which must outlive this object.
  CurveColumns(const GraphCurves& curves, const SlotColours& colours, const PictureSize& size);

  // Adds the next column, from the left, to `picture`. The result is that of drawing a line one
  // pixel wide from each sample to the next, sample after sample and, for each sample, channel
  // after channel.
  void draw_next(PixelRuns& picture);
  // Skips the next column; gives the rows that the first curve covers there.
  Rows pass_next();

 private:
  struct Curve {
    std::span<const float> values;
    ValueRows row_of;
    QRgb colour;
    // The line from the last sample passed to the next one.
    LineRows line{};
    // In the current column: the rows of the line that enters it, of the line that leaves it, and
    // of the whole curve; the row of each sample, set only where several curves overlap.
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
  // The samples in the current column: from `first_` up to, but not including, `end_`.
  std::size_t first_ = 0;
  std::size_t end_ = 0;
  // Rows of the column that several curves cover and that have no colour yet.
  std::vector<Rows> open_;
  std::vector<int> edges_;
};
