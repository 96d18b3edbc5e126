// The geometry of the data sheet, in twips: which samples are on which page, and where.
#pragma once

#include <QSizeF>

#include <vector>

#include "print/page.h"
#include "print/printed_view.h"

// In millimetres on the actual paper, in either orientation.
struct SheetMeasures {
  double side_margin = 20;
  double title_top = 12;
  double recorder_top = 17.5;
  double head_rule = 24;
  double body_top = 28;
  double bottom_margin = 15;
  double line = 5.5;
  double row = 5;
  double head_row = 6;
  // The gap left of a column's text.
  double cell_gap = 3;
  double group_gap = 6;
  double least_value = 15;
};
inline constexpr SheetMeasures sheet_mm;
inline constexpr double sheet_points = 9;

constexpr double sheet_twips(double mm) {
  return mm * twips_per_mm;
}

// A run of samples of the view, counted from the view's start.
struct SheetRows {
  int first = 0;
  int count = 0;
};

// Divides a sheet of the view's samples into pages of `size` twips. The table's columns (number,
// time, one per channel) are as wide as their widest number. If they fit more than once, groups of
// them lie side by side and are filled one after the other. Even a view without samples has a page;
// samples that the Recording does not hold are left out.
class SheetPages {
 public:
  SheetPages(const PrintedView& view, QSizeF size);

  int count() const;
  // The rows of page `page`, counted from 0.
  SheetRows rows(int page) const;

  double left() const { return sheet_twips(sheet_mm.side_margin); }
  double right() const { return size_.width() - left(); }
  // The first page has the recording's information above its table.
  double table_top(int page) const;
  int rows_in_group(int page) const;
  int groups() const { return groups_; }
  // The distance from a group's left edge to the next one's.
  double group_step() const;
  // The right edges of a group's columns, counted from its left edge.
  const std::vector<double>& column_edges() const { return column_edges_; }

 private:
  void lay_out_columns(const std::vector<double>& widths);
  int rows_on_page(int page) const { return groups_ * rows_in_group(page); }

  QSizeF size_;
  int samples_;
  int channels_;
  int groups_ = 1;
  std::vector<double> column_edges_;
};
