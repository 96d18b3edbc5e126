#include "print/paper_curve.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

#include "base/twips.h"

namespace {

// The ups and downs of a calm curve add up to at most this many widths of its graph.
constexpr double calm_widths = 10;

double y_of(float value, const CurvePlace& place) {
  const double scale = place.size.height() / (place.high - place.low);
  return place.size.height() - (value - place.low) * scale + place.shift;
}

// Adds the line between two points to the columns that it passes.
void cover(std::vector<Ink>& inks, double column, QPointF from, QPointF to) {
  const auto column_at = [&](double x) {
    return std::min(static_cast<std::size_t>(x / column), inks.size() - 1);
  };
  const double slope = to.x() > from.x() ? (to.y() - from.y()) / (to.x() - from.x()) : 0;
  const std::size_t last = column_at(to.x());
  double y = from.y();
  for (std::size_t k = column_at(from.x()); k <= last; ++k) {
    const double edge = static_cast<double>(k + 1) * column;
    const double next = k == last ? to.y() : from.y() + slope * (edge - from.x());
    inks[k].top = std::min({inks[k].top, y, next});
    inks[k].bottom = std::max({inks[k].bottom, y, next});
    y = next;
  }
}

}  // namespace

std::vector<Ink> paper_curve(const CurveSamples& samples, const CurvePlace& place, double column) {
  const double width = place.size.width();
  std::vector<Ink> inks(static_cast<std::size_t>(std::ceil(width / column)));
  QPointF last;
  bool joined = false;
  for (int i = 0; i < samples.count; ++i) {
    const QPointF point(width * i / (samples.count - 1), y_of(samples[i], place));
    const bool is_number = std::isfinite(point.y());
    if (joined && is_number) cover(inks, column, last, point);
    last = point;
    joined = is_number;
  }
  return inks;
}

double ups_and_downs(const CurveSamples& samples, const CurvePlace& place) {
  double way = 0;
  for (int i = 1; i < samples.count; ++i) {
    const auto seen = [&](int sample) {
      return std::clamp(y_of(samples[sample], place), 0.0, place.size.height());
    };
    const double step = std::fabs(seen(i) - seen(i - 1));
    if (std::isfinite(step)) way += step;
  }
  return way;
}

bool is_dashed(const CurveSamples& samples, const CurvePlace& place) {
  const double width = place.size.width();
  // A preview has this many columns of pixels.
  if (samples.count > width / twips_per_pixel) return false;
  return ups_and_downs(samples, place) <= calm_widths * width;
}
