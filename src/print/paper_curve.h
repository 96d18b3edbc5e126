// A channel's curve as lines for paper: no more points than the paper can show, none outside the
// graph, so that dashes cost what is seen of them and no more.
#pragma once

#include <QPolygonF>

#include <vector>

#include "app/curve.h"

// The pieces of the curve that lie within 0..height, in the unit of `place.size`, whose span must
// be 2 or more. Samples that share a column `column` wide give its first, lowest, highest and last
// one: the ink is the same. Values that are no numbers leave a gap.
std::vector<QPolygonF> paper_curve(const CurveSamples& samples, const CurvePlace& place,
                                   double column);
