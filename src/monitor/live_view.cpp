#include "monitor/live_view.h"

#include <algorithm>

#include "base/numbers.h"

namespace {

constexpr double right_of_cursor_twips = 30;
constexpr double left_of_cursor_twips = 1417.5;

}  // namespace

void LiveView::place(int slider, int live_count) {
  std::int32_t first = 0;
  if (live_count >= Span) {
    first = to_int32(slider * static_cast<double>(live_count) / 100.0);
    if (first + Span > live_count) first = live_count - Span;
  }
  FirstShown = static_cast<std::int16_t>(first);
  LastShown = static_cast<std::int16_t>(first + Span - 1);
}

void LiveView::zoom(int button) {
  Span = zoomed(button == 0 ? Zoom::out : Zoom::in, Span, most_span).value_or(Span);
}

std::optional<int> LiveView::last_reading(int live_count) const {
  if (FirstShown >= live_count) return std::nullopt;
  return std::min<int>(LastShown, live_count - 1);
}

std::optional<int> LiveView::nearest(double x, double width, int live_count) const {
  const auto last = last_reading(live_count);
  if (!last || width <= 0) return std::nullopt;
  return std::clamp(to_int32(x / width * (Span - 1)), 0, *last - FirstShown);
}

double cursor_label_left(double cursor, double label_width, double graph_width) {
  const double right = cursor + right_of_cursor_twips;
  return right + label_width > graph_width ? cursor - left_of_cursor_twips : right;
}
