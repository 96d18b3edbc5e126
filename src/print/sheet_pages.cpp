#include "print/sheet_pages.h"

#include <algorithm>
#include <numeric>

#include "base/numbers.h"
#include "print/paper.h"

namespace {

double widest(const QStringList& texts) {
  double width = 0;
  for (const QString& text : texts) width = std::max(width, text_width(text, {sheet_points}));
  return width;
}

// Digits are equally wide, so the widest number is the lowest or the highest.
double value_width(const PrintedView& view, int slot, int samples) {
  double low = 0;
  double high = 0;
  for (int n = 0; n < samples; ++n) {
    const double value = view.recording.SampleValues(view.start + n, slot);
    low = std::min(low, value);
    high = std::max(high, value);
  }
  return std::max(widest({fixed2(low), fixed2(high)}), sheet_twips(sheet_mm.least_value));
}

std::vector<double> wanted_widths(const PrintedView& view, int samples) {
  const int last = view.start + samples - 1;
  QStringList times = {QStringLiteral("Time")};
  for (const int sample : {view.start, last}) {
    if (samples > 0) times << view.recording.SampleTimes(sample);
  }
  std::vector<double> widths = {widest({QStringLiteral("Number"), QString::number(last + 1)}),
                                widest(times)};
  for (const int slot : printed_slots(view)) widths.push_back(value_width(view, slot, samples));
  for (std::size_t column = 1; column < widths.size(); ++column) {
    widths[column] += sheet_twips(sheet_mm.cell_gap);
  }
  return widths;
}

}  // namespace

SheetPages::SheetPages(const PrintedView& view, QSizeF size)
    : size_(size),
      samples_(printed_samples(view)),
      channels_(static_cast<int>(printed_slots(view).size())) {
  lay_out_columns(wanted_widths(view, samples_));
}

// Spare room widens the channels' columns, for their names; too little room narrows all columns.
void SheetPages::lay_out_columns(const std::vector<double>& widths) {
  const double wanted = std::accumulate(widths.begin(), widths.end(), 0.0);
  const double gap = sheet_twips(sheet_mm.group_gap);
  const double room = right() - left();
  groups_ = std::max(1, static_cast<int>((room + gap) / (wanted + gap)));
  const double group = group_step() - gap;
  const double narrowed = std::min(1.0, group / wanted);
  const double wider = std::max(0.0, group - wanted) / std::max(1, channels_);
  double edge = 0;
  for (std::size_t column = 0; column < widths.size(); ++column) {
    edge += widths[column] * narrowed + (column < 2 ? 0 : wider);
    column_edges_.push_back(edge);
  }
}

double SheetPages::group_step() const {
  const double gap = sheet_twips(sheet_mm.group_gap);
  return (right() - left() + gap) / groups_;
}

double SheetPages::table_top(int page) const {
  if (page > 0) return sheet_twips(sheet_mm.body_top);
  // Two lines of text, a heading and a row per channel, and an empty line.
  return sheet_twips(sheet_mm.body_top + 3 * sheet_mm.line + sheet_mm.head_row +
                     sheet_mm.row * channels_);
}

int SheetPages::rows_in_group(int page) const {
  const double bottom = size_.height() - sheet_twips(sheet_mm.bottom_margin);
  const double room = bottom - table_top(page) - sheet_twips(sheet_mm.head_row);
  return std::max(1, static_cast<int>(room / sheet_twips(sheet_mm.row)));
}

int SheetPages::count() const {
  const int others = std::max(0, samples_ - rows_on_page(0));
  return 1 + (others + rows_on_page(1) - 1) / rows_on_page(1);
}

SheetRows SheetPages::rows(int page) const {
  const int first = page == 0 ? 0 : rows_on_page(0) + (page - 1) * rows_on_page(1);
  return {first, std::clamp(samples_ - first, 0, rows_on_page(page))};
}
