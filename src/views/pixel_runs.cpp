#include "views/pixel_runs.h"

namespace {

constexpr std::int32_t no_change = -1;

}  // namespace

void lay_over(std::span<QRgb> target, std::span<const QRgb> upper, std::span<const QRgb> lower) {
  for (std::size_t i = 0; i < target.size(); ++i) {
    // Reading both in any case lets the compiler process several pixels at a time.
    const QRgb above = upper[i];
    const QRgb below = lower[i];
    target[i] = above ? above : below;
  }
}

PixelRuns::PixelRuns(QSize size, int line)
    : ends_(static_cast<std::size_t>(size.height()) + 1, no_change),
      beginnings_(ends_),
      row_(static_cast<std::size_t>(size.width())),
      widenings_(static_cast<std::size_t>(line - 1), Widening{row_, row_, row_}) {}

void PixelRuns::add(int column, Rows rows, QRgb colour) {
  add_change(beginnings_, rows.first, column, colour);
  add_change(ends_, rows.last + 1, column, 0);
}

void PixelRuns::add_change(std::vector<std::int32_t>& lists, int row, int column, QRgb colour) {
  std::int32_t& list = lists[static_cast<std::size_t>(row)];
  changes_.push_back({column, colour, list});
  list = static_cast<std::int32_t>(changes_.size()) - 1;
}

std::span<const QRgb> PixelRuns::next_row() {
  apply(ends_[next_]);
  apply(beginnings_[next_]);
  ++next_;
  std::span<const QRgb> row = row_;
  for (Widening& widening : widenings_) {
    widen(widening, row);
    row = widening.row;
  }
  return row;
}

void PixelRuns::apply(std::int32_t list) {
  for (std::int32_t at = list; at != no_change;) {
    const Change& change = changes_[static_cast<std::size_t>(at)];
    row_[static_cast<std::size_t>(change.column)] = change.colour;
    at = change.next;
  }
}

void PixelRuns::widen(Widening& widening, std::span<const QRgb> row) {
  auto& [result, sideways, above] = widening;
  sideways[0] = row[0];
  lay_over(std::span(sideways).subspan(1), row.subspan(1), row);
  lay_over(result, sideways, above);
  above.swap(sideways);
}
