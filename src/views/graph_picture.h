// The picture of the graph: grid and curves, drawn from the values that the last redraw took,
// whatever has become of the Recording since.
#pragma once

#include <QImage>
#include <QSize>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "app/recording.h"
#include "base/twips.h"

// Colours of the channel slots and of the grid.
inline constexpr std::array<QRgb, Recording::max_channels> curve_colours = {
    qRgb(255, 0, 0), qRgb(0, 0, 255), qRgb(0, 192, 192), qRgb(255, 255, 0)};
inline constexpr QRgb grid_colour = qRgb(200, 200, 200);

// What a redraw shows: the values of the view's samples, channel by channel, and the values at the
// top and the bottom edge of the graph. Without channels the grid alone is drawn.
struct GraphCurves {
  struct Channel {
    std::vector<float> values;
    float high = 1;
    float low = 0;
  };
  std::vector<Channel> channels;
  // The samples that the picture's width is for. Where there are fewer, its right part stays empty;
  // there being more, it is for them.
  int span = 0;

  int samples() const;

  // Takes the values of `count` samples, but at least one, from `start` on; the scales are left
  // alone. Throws BoundsError when a sample lies outside the arrays, and then takes nothing.
  void copy_view(const Recording& recording, std::int32_t start, std::int32_t count);
};

// A picture's size in device pixels and in twips.
struct PictureSize {
  QSize pixels;
  float width = 0;
  float height = 0;
  // Width in device pixels of the grid's and the curves' lines: a pixel of the window, but at least
  // one of the device.
  int line = 1;
};
// `logical` is the size in pixels of the window.
PictureSize picture_size(QSize logical, QSize device, double device_pixel_ratio);

// Device pixels to the twip along a side of the picture. The lines of the first and the last place
// fill the picture's edges.
inline float pixels_per_twip(int pixels, float twips, int line) {
  return static_cast<float>(pixels - line) / twips;
}

// Twips to the nearest whole pixel, ties to the right and downwards. A place more than a million
// pixels away is put there: whole numbers stay exact in single precision, and the slope of a line
// through the picture does not visibly change.
inline int whole_pixel(float twips, float pixels_per_twip) {
  constexpr float farthest = 1048576.0F;
  float place = twips * pixels_per_twip + 0.5F;
  place = std::max(-farthest, place);
  place = std::min(farthest, place);
  const int towards_zero = static_cast<int>(place);
  return towards_zero - static_cast<int>(place < static_cast<float>(towards_zero));
}

// The pixel column of each of the first `samples` samples of a view of `span` samples, or of as
// many where that is more. The picture's edges are the view's first and last column.
std::vector<int> sample_columns(int samples, const PictureSize& size, int span = 0);

// The pixel row of a value of one channel. The picture's edges are its first and last row; values
// outside the scale keep their places outside, up to a million pixels away.
class ValueRows {
 public:
  ValueRows(const GraphCurves::Channel& channel, int slot, const PictureSize& size);
  int operator()(float value) const {
    return whole_pixel(height_ - (value - low_) / range_ * height_ + offset_, pixels_per_twip_);
  }

 private:
  float low_;
  float range_;
  float height_;
  float offset_;
  float pixels_per_twip_;
};

// The first pixel of each line of the grid along a side of the picture.
std::vector<int> grid_lines(int pixels, float twips, int line);

struct PictureColours {
  QRgb background;
  // Edge of the curve that is brought forward.
  QRgb edge;
};

// Keeps the curves and draws them as often as they are wanted.
class GraphPicture {
 public:
  // The curves to show from now on, to be filled by the caller. Before the first call the picture
  // is empty, without a grid.
  GraphCurves& new_curves();
  const GraphCurves& curves() const { return curves_; }

  // The channel slot whose curve is drawn wide, with an edge, over the others, which are drawn
  // thin and pale; none: all alike.
  void bring_forward(std::optional<int> slot) { forward_ = slot; }
  std::optional<int> forward() const { return forward_; }

  // Fills an image of 32 bits a pixel that has this size.
  void draw(QImage& image, const PictureSize& size, const PictureColours& colours) const;

 private:
  void draw_one_forward(QImage& image, const PictureSize& size,
                        const PictureColours& colours) const;

  GraphCurves curves_;
  bool has_curves_ = false;
  std::optional<int> forward_;
};
