#include "print/curve_ink.h"

#include <QList>
#include <QPainter>
#include <QRectF>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Whether `x` is in a dash. Dashes and gaps alternate, their lengths in line widths. They are
// measured horizontally, so that the patterns differ however much a curve rises and falls.
bool in_dash(std::size_t slot, double x) {
  static const std::array<std::vector<double>, Recording::max_channels> dashes = {
      {{}, {9, 4}, {3, 3}, {12, 3, 3, 3}}};
  const std::vector<double>& lengths = dashes[slot];
  if (lengths.empty()) return true;
  double rest = std::fmod(x / curve_width, std::accumulate(lengths.begin(), lengths.end(), 0.0));
  std::size_t i = 0;
  while (i + 1 < lengths.size() && rest >= lengths[i]) rest -= lengths[i++];
  return i % 2 == 0;
}

// Gaps are pale, not empty: a peak of one sample must not vanish in one.
QColor pale(const QColor& colour) {
  const auto paled = [](int part) { return 255 - (255 - part) * 2 / 5; };
  return {paled(colour.red()), paled(colour.green()), paled(colour.blue())};
}

}  // namespace

void draw_ink(QPainter& painter, const std::vector<Ink>& inks, const CurveLook& look) {
  // The gaps, which are drawn first, and the dashes.
  std::array<QList<QRectF>, 2> parts;
  for (std::size_t k = 0; k < inks.size(); ++k) {
    const double top = std::max(inks[k].top, -curve_width);
    const double bottom = std::min(inks[k].bottom, look.height + curve_width);
    if (top > bottom) continue;
    const double x = (static_cast<double>(k) + 0.5) * look.column;
    const bool dark = !look.dashed || in_dash(look.slot, x);
    parts[dark ? 1 : 0] << QRectF(x - curve_width / 2, top - curve_width / 2, curve_width,
                                  bottom - top + curve_width);
  }
  const QColor colour(paper_colours[look.slot]);
  painter.setPen(Qt::NoPen);
  for (std::size_t part = 0; part < parts.size(); ++part) {
    painter.setBrush(part == 0 ? pale(colour) : colour);
    painter.drawRects(parts[part]);
  }
  painter.setBrush(Qt::NoBrush);
}
