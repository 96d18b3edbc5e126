#include "base/contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(double{colour.redF()}) + 0.7152 * linear(double{colour.greenF()}) +
         0.0722 * linear(double{colour.blueF()});
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor seen_through(const QColor& upper, double opacity, const QColor& lower) {
  const auto mix = [opacity](int a, int b) {
    return static_cast<int>(std::lround(opacity * a + (1 - opacity) * b));
  };
  return QColor(mix(upper.red(), lower.red()), mix(upper.green(), lower.green()),
                mix(upper.blue(), lower.blue()));
}

QColor readable_colour(const QColor& wanted, const QColor& text,
                       std::span<const QColor> backgrounds) {
  constexpr int steps = 20;
  for (int step = 0; step < steps; ++step) {
    const QColor colour = seen_through(text, static_cast<double>(step) / steps, wanted);
    if (std::all_of(backgrounds.begin(), backgrounds.end(), [&](const QColor& background) {
          return contrast(colour, background) >= readable_contrast;
        })) {
      return colour;
    }
  }
  return text;
}
