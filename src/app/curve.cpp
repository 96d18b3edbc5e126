#include "app/curve.h"

#include <QLine>
#include <QPainter>
#include <QPolygon>

#include <algorithm>
#include <cmath>

namespace {

// Values far outside the scale must not overflow a pixel coordinate.
constexpr double farthest = 100'000.0;

class Scale {
 public:
  explicit Scale(const CurvePlace& place)
      : x_step_(place.size.width() / (place.span - 1)),
        y_step_(place.size.height() / (place.high - place.low)),
        high_(place.high),
        shift_(place.shift) {}

  int x(int sample) const { return static_cast<int>(std::lround(sample * x_step_)); }
  int y(double value) const {
    const double place = (high_ - value) * y_step_ + shift_;
    return static_cast<int>(std::lround(std::clamp(place, -farthest, farthest)));
  }
  // The first sample beyond column `column`.
  int end_of(int column) const { return static_cast<int>(std::ceil((column + 0.5) / x_step_)); }

 private:
  double x_step_;
  double y_step_;
  double high_;
  double shift_;
};

void draw_segments(QPainter& painter, const CurveSamples& samples, const Scale& scale) {
  QPolygon points(samples.count);
  for (int j = 0; j < samples.count; ++j) points[j] = {scale.x(j), scale.y(samples[j])};
  painter.drawPolyline(points);
}

// The segment that leaves a column runs up or down within it, so its line reaches as far as the
// next column's first sample.
void draw_columns(QPainter& painter, const CurveSamples& samples, const Scale& scale) {
  const int last_column = scale.x(samples.count - 1);
  QList<QLine> lines;
  lines.reserve(last_column + 1);
  int next = 0;
  while (next < samples.count) {
    const int begin = next;
    const int column = scale.x(begin);
    next = std::clamp(scale.end_of(column), begin + 1, samples.count);
    const int reached = std::min(next, samples.count - 1);
    float least = samples[begin];
    float most = least;
    for (int j = begin + 1; j <= reached; ++j) {
      least = std::min(least, samples[j]);
      most = std::max(most, samples[j]);
    }
    lines.emplace_back(column, scale.y(most), column, scale.y(least));
  }
  painter.drawLines(lines);
}

}  // namespace

void draw_curve(QPainter& painter, const CurveSamples& samples, const CurvePlace& place) {
  const bool drawable = place.span >= 2 && place.size.width() >= 1 && place.high != place.low;
  if (!drawable || samples.count < 1) return;
  const Scale scale(place);
  if (samples.count == 1) {
    painter.drawPoint(0, scale.y(samples[0]));
  } else if (place.span - 1 > place.size.width()) {
    draw_columns(painter, samples, scale);
  } else {
    draw_segments(painter, samples, scale);
  }
}
