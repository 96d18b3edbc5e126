// Draws the live graph: a grid of 16 x 16 cells and one curve a channel on a fixed scale.
#pragma once

#include <QColor>
#include <QImage>

#include <array>

class LiveBuffer;
class LiveView;

// The values at the graph's top and bottom edge, in every channel's unit.
inline constexpr double live_graph_high = 120.0;
inline constexpr double live_graph_low = -40.0;
inline constexpr int live_graph_cells = 16;

// The curves' colours, channel 1 first.
inline constexpr std::array live_curve_colours = {QColor(208, 32, 32), QColor(32, 64, 208),
                                                  QColor(0, 144, 136), QColor(200, 128, 0)};

struct LiveGraphColours {
  QColor background;
  QColor grid;
};

// Fills `image`, whose pixels are those of a device of `dpi` pixels an inch. Shows the readings of
// the first `channels` channels that lie in `view`. Each channel lies 3 twips lower than the one
// before, so that equal values stay visible side by side.
void draw_live_graph(QImage& image, double dpi, const LiveBuffer& buffer, const LiveView& view,
                     int channels, const LiveGraphColours& colours);
