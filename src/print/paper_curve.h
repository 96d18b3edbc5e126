// A channel's curve on paper, cut into upright columns so fine that the ink in each is one run from
// top to bottom. What a curve costs to draw then depends on the paper, not on its samples.
#pragma once

#include <QSizeF>

#include <limits>
#include <vector>

#include "base/curve.h"

// Where a curve lies, counted from the upper left corner of its graph in any unit.
struct CurvePlace {
  QSizeF size;
  // The value `high` lies at y = shift, the value `low` at y = height + shift. Values outside lie
  // outside.
  double high = 1;
  double low = 0;
  double shift = 0;
};

// What the curve covers in a column; nothing where `top` is below `bottom`.
struct Ink {
  double top = std::numeric_limits<double>::infinity();
  double bottom = -std::numeric_limits<double>::infinity();
};

// The straight lines from sample to sample, the first at the left edge and the last at the right
// one, in columns of this width from the left edge on. Values that are no numbers leave a gap; with
// `high` equal to `low` there is no curve.
std::vector<Ink> paper_curve(const CurveSamples& samples, const CurvePlace& place, double column);

// How far a curve goes up and down within its graph in all: the same for every device.
double ups_and_downs(const CurveSamples& samples, const CurvePlace& place);

// Whether a curve is few samples and calm enough for dashes. Elsewhere their gaps would cut it into
// stripes. Says the same for every device; the places are in twips.
bool takes_dashes(const CurveSamples& samples, const CurvePlace& place);
