// The look of a channel's curve on paper: its colour, and dashes for print without colour.
#pragma once

#include <QColor>

#include <array>

#include "app/recording.h"
#include "print/paper_curve.h"

class QPainter;

// Colours of the channel slots on paper, for curves and texts: the screen's colours, with teal and
// yellow darkened until they are readable on white.
inline constexpr std::array<QRgb, Recording::max_channels> paper_colours = {
    qRgb(255, 0, 0), qRgb(0, 0, 255), qRgb(0, 128, 128), qRgb(140, 112, 0)};

// The width of a curve in twips.
inline constexpr double curve_width = 17;

struct CurveLook {
  std::size_t slot = 0;
  bool dashed = true;
  // The width of a column of ink and the height of the graph, in twips.
  double column = 1;
  double height = 0;
};

// Draws a curve as a square pen would that follows it. The painter's origin is the graph's corner.
void draw_ink(QPainter& painter, const std::vector<Ink>& inks, const CurveLook& look);
