#include "views/curve_columns.h"

#include <algorithm>

#include "views/extremes.h"

CurveColumns::CurveColumns(const GraphCurves& curves, const SlotColours& colours,
                           const PictureSize& size)
    : size_(size.pixels), columns_(sample_columns(curves.samples(), size, curves.span)) {
  if (columns_.size() < 2) return;
  for (std::size_t c = 0; c < curves.channels.size(); ++c) {
    if (colours[c] == 0) continue;
    const GraphCurves::Channel& channel = curves.channels[c];
    curves_.push_back({channel.values, ValueRows(channel, static_cast<int>(c), size), colours[c]});
  }
}

void CurveColumns::draw_next(PixelRuns& picture) {
  advance();
  draw_rows_of_one_curve(picture);
  if (!open_.empty()) draw_rows_of_several(picture);
}

Rows CurveColumns::pass_next() {
  advance();
  return curves_.empty() ? no_rows : curves_.front().covered;
}

void CurveColumns::advance() {
  ++column_;
  first_ = end_;
  while (end_ < columns_.size() && columns_[end_] == column_) ++end_;
  for (Curve& curve : curves_) find_covered_rows(curve);
}

void CurveColumns::find_covered_rows(Curve& curve) {
  curve.entering = curve.line.in(column_);
  curve.leaving = no_rows;
  curve.covered = curve.entering;
  if (first_ == end_) return;
  if (end_ - first_ > 1) {
    const auto [smallest, largest] = extremes_of(in_column(curve));
    // The largest value has the first row, or the last if the limits are upside down.
    const Rows rows = rows_between(curve.row_of(smallest), curve.row_of(largest));
    curve.covered = hull(curve.covered, common(rows, {0, size_.height() - 1}));
  }
  if (end_ == columns_.size()) {
    curve.line = {};
    return;
  }
  curve.line = LineRows({column_, curve.row_of(curve.values[end_ - 1])},
                        {columns_[end_], curve.row_of(curve.values[end_])}, size_);
  curve.leaving = curve.line.in(column_);
  curve.covered = hull(curve.covered, curve.leaving);
}

// Writes the rows that only one curve covers; leaves open those that several cover.
void CurveColumns::draw_rows_of_one_curve(PixelRuns& picture) {
  edges_.clear();
  for (const Curve& curve : curves_) {
    if (curve.covered.empty()) continue;
    edges_.insert(edges_.end(), {curve.covered.first, curve.covered.last + 1});
  }
  std::sort(edges_.begin(), edges_.end());
  open_.clear();
  for (std::size_t k = 1; k < edges_.size(); ++k) {
    const Rows rows = {edges_[k - 1], edges_[k] - 1};
    if (rows.empty()) continue;
    const auto covers = [rows](const Curve& curve) { return !common(curve.covered, rows).empty(); };
    const auto owner = std::find_if(curves_.begin(), curves_.end(), covers);
    if (owner == curves_.end()) continue;
    if (std::none_of(owner + 1, curves_.end(), covers)) {
      picture.add(column_, rows, owner->colour);
    } else if (!open_.empty() && open_.back().last + 1 == rows.first) {
      open_.back().last = rows.last;
    } else {
      open_.push_back(rows);
    }
  }
}

// Goes backwards through the lines in the column: an open row gets the colour drawn last.
void CurveColumns::draw_rows_of_several(PixelRuns& picture) {
  for (Curve& curve : curves_) {
    const auto values = in_column(curve);
    curve.rows.resize(values.size());
    std::transform(values.begin(), values.end(), curve.rows.begin(), ValueRows(curve.row_of));
  }
  const auto backwards = [this](const auto& visit) {
    std::for_each(curves_.rbegin(), curves_.rend(), visit);
  };
  backwards([&](const Curve& curve) { draw_open_rows_of(curve.leaving, curve.colour, picture); });
  for (std::size_t i = end_ - first_; i-- > 1 && !open_.empty();) {
    backwards([&](const Curve& curve) {
      draw_open_rows_of(rows_between(curve.rows[i - 1], curve.rows[i]), curve.colour, picture);
    });
  }
  backwards([&](const Curve& curve) { draw_open_rows_of(curve.entering, curve.colour, picture); });
}

void CurveColumns::draw_open_rows_of(Rows line, QRgb colour, PixelRuns& picture) {
  for (std::size_t k = 0; k < open_.size(); ++k) {
    const Rows open = open_[k];
    const Rows given = common(open, line);
    if (given.empty()) continue;
    picture.add(column_, given, colour);
    const Rows above = {open.first, given.first - 1};
    const Rows below = {given.last + 1, open.last};
    open_[k] = above.empty() ? below : above;
    if (!above.empty() && !below.empty()) open_.push_back(below);
    if (open_[k].empty()) {
      open_[k--] = open_.back();
      open_.pop_back();
    }
  }
}
