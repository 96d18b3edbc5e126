#include "views/line_rows.h"

#include <cstdlib>
#include <utility>

namespace {

// The painter's units per pixel: 64 for a line's ends, 65536 for positions along it. Each step
// rounds as the painter does, because that decides to which column a row of the line belongs.
constexpr int end_units = 64;
constexpr int half_pixel = end_units / 2;
constexpr std::int64_t way_units = 65536;

struct Ends {
  double x1;
  double y1;
  double x2;
  double y2;
};

// Cuts off what lies more than a pixel above or below the picture. False if nothing is left.
bool clip(Ends& line, int height) {
  const double top = -1;
  const double bottom = height + 1;
  if (std::min(line.y1, line.y2) >= top && std::max(line.y1, line.y2) <= bottom) return true;
  if (std::max(line.y1, line.y2) <= top || std::min(line.y1, line.y2) >= bottom) return false;
  const auto move_end = [&line](double& x, double& y, double edge) {
    x += (line.x2 - line.x1) / (line.y2 - line.y1) * (edge - y);
    y = edge;
  };
  if (line.y1 < top || line.y1 > bottom) move_end(line.x1, line.y1, line.y1 < top ? top : bottom);
  if (line.y2 < top || line.y2 > bottom) move_end(line.x2, line.y2, line.y2 < top ? top : bottom);
  return true;
}

// a / b rounded up; b is positive.
std::int64_t divided_up(std::int64_t a, std::int64_t b) {
  return a >= 0 ? (a + b - 1) / b : -(-a / b);
}

}  // namespace

LineRows::LineRows(PixelPoint from, PixelPoint to, QSize picture) : height_(picture.height()) {
  Ends ends = {double(from.column), double(from.row), double(to.column), double(to.row)};
  if (!clip(ends, height_)) return;
  int x1 = static_cast<int>(ends.x1 * end_units);
  int y1 = static_cast<int>(ends.y1 * end_units);
  int x2 = static_cast<int>(ends.x2 * end_units);
  int y2 = static_cast<int>(ends.y2 * end_units);
  is_steep_ = std::abs(x2 - x1) < std::abs(y2 - y1);
  if (is_steep_) {
    std::swap(x1, y1);
    std::swap(x2, y2);
  }
  // x is now the longer direction, in which the line advances.
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  if (x1 == x2) return;
  step_ = (y2 - y1) * way_units / (x2 - x1);
  first_ = x1 >> 6;
  last_ = x2 >> 6;
  // The line begins half a pixel before its first end.
  const int start = x1 - half_pixel;
  const int middle = first_ * end_units + (step_ > 0 ? half_pixel : 0);
  across_ = y1 * (way_units / end_units) - (step_ >> 1) + ((middle - start) * step_ >> 6);
}

Rows LineRows::in(int column) const {
  const Rows rows = is_steep_ ? steep_rows(column) : flat_rows(column);
  return common(rows, {0, height_ - 1});
}

Rows LineRows::flat_rows(int column) const {
  if (column < first_ || column > last_) return no_rows;
  const auto row = static_cast<int>((across_ + (column - first_) * step_) >> 16);
  return {row, row};
}

// The rows in which the line is between the column's edges.
Rows LineRows::steep_rows(int column) const {
  const std::int64_t left = column * way_units - across_;
  const std::int64_t right = left + way_units;
  if (step_ == 0) return left <= 0 && right > 0 ? Rows{first_, last_} : no_rows;
  const std::int64_t from = step_ > 0 ? divided_up(left, step_) : divided_up(1 - right, -step_);
  const std::int64_t to = step_ > 0 ? divided_up(right, step_) : divided_up(1 - left, -step_);
  const std::int64_t count = last_ - first_ + 1;
  return {first_ + static_cast<int>(std::clamp<std::int64_t>(from, 0, count)),
          first_ + static_cast<int>(std::clamp<std::int64_t>(to, 0, count)) - 1};
}
