// A channel's curve on paper, cut into vertical columns so narrow that the ink in each is one run.
// The cost of drawing it then depends on the paper, not on the number of samples.
#pragma once

#include <QSizeF>

#include <limits>
#include <vector>

#include "base/curve.h"

// The place of a curve, counted from the upper left corner of its graph in any unit.
struct CurvePlace {
  QSizeF size;
  // The value `high` is at y = shift, the value `low` at y = height + shift. Values outside these
  // limits lie beyond those places.
  double high = 1;
  double low = 0;
  double shift = 0;
};

// What the curve covers in a column, from `top` down to `bottom`; nothing if `top` > `bottom`.
struct Ink {
  double top = std::numeric_limits<double>::infinity();
  double bottom = -std::numeric_limits<double>::infinity();
};

// The ink of the straight lines from sample to sample, the first at the left edge and the last at
// the right, in columns of this width from the left. A value that is not finite leaves a gap; if
// `high` equals `low` there is no curve.
std::vector<Ink> paper_curve(const CurveSamples& samples, const CurvePlace& place, double column);

// The sum of a curve's ups and downs within its graph, the same for every device.
double ups_and_downs(const CurveSamples& samples, const CurvePlace& place);

// Whether a curve has few enough samples and is calm enough for dashes. Otherwise their gaps would
// cut it into stripes. The answer is the same for every device; `place` is in twips.
bool is_dashed(const CurveSamples& samples, const CurvePlace& place);
