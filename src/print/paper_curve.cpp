#include "print/paper_curve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Collects points one after the other into pieces that stay between 0 and `height`.
class Pieces {
 public:
  explicit Pieces(double height) : height_(height) {}

  void add(QPointF point) {
    if (!std::isfinite(point.y())) {
      started_ = false;
      return;
    }
    if (started_) join(point);
    last_ = point;
    started_ = true;
  }

  std::vector<QPolygonF> take() { return std::move(pieces_); }

 private:
  // The part of the segment from the last point to `point` that lies inside.
  void join(QPointF point) {
    const double rise = point.y() - last_.y();
    double from = 0;
    double to = 1;
    if (rise == 0) {
      if (last_.y() < 0 || last_.y() > height_) return;
    } else {
      const double at_top = -last_.y() / rise;
      const double at_bottom = (height_ - last_.y()) / rise;
      from = std::max(from, std::min(at_top, at_bottom));
      to = std::min(to, std::max(at_top, at_bottom));
      if (from > to) return;
    }
    const double way = point.x() - last_.x();
    const double entry = rise > 0 ? 0 : height_;
    const QPointF start = from > 0 ? QPointF(last_.x() + from * way, entry) : last_;
    const QPointF end = to < 1 ? QPointF(last_.x() + to * way, height_ - entry) : point;
    if (pieces_.empty() || pieces_.back().constLast() != start) pieces_.push_back({start});
    pieces_.back().append(end);
  }

  double height_;
  QPointF last_;
  bool started_ = false;
  std::vector<QPolygonF> pieces_;
};

// The samples of one column that decide its ink, in their order.
std::array<int, 4> deciding(const CurveSamples& samples, int first, int last) {
  int lowest = first;
  int highest = first;
  for (int i = first + 1; i <= last; ++i) {
    if (samples[i] < samples[lowest]) lowest = i;
    if (samples[i] > samples[highest]) highest = i;
  }
  return {first, std::min(lowest, highest), std::max(lowest, highest), last};
}

}  // namespace

std::vector<QPolygonF> paper_curve(const CurveSamples& samples, const CurvePlace& place,
                                   double column) {
  const double width = place.size.width();
  const double height = place.size.height();
  const double step = width / (place.span - 1);
  const double scale = height / (place.high - place.low);
  Pieces pieces(height);
  int added = -1;
  const auto add = [&](int i) {
    if (i <= added) return;
    added = i;
    pieces.add({i * step, height - (samples[i] - place.low) * scale + place.shift});
  };
  for (int first = 0; first < samples.count;) {
    // At least one sample a column; with four or fewer nothing is left out.
    const double edge = (std::floor(first * step / column) + 1) * column;
    const int last =
        std::clamp(static_cast<int>(std::ceil(edge / step)) - 1, first, samples.count - 1);
    if (last - first < 4) {
      for (int i = first; i <= last; ++i) add(i);
    } else {
      for (const int i : deciding(samples, first, last)) add(i);
    }
    first = last + 1;
  }
  return pieces.take();
}
