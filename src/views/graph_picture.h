// The graph's picture: grid and curves. It draws the values copied at the last redraw, whatever
// happens to the Recording afterwards.
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

// What a redraw shows: per channel, the values of the view's samples and the values at the graph's
// top and bottom edges. Without channels only the grid is drawn.
struct GraphCurves {
  struct Channel {
    std::vector<float> values;
    float high = 1;
    float low = 0;
  };
  std::vector<Channel> channels;
  // The number of samples that the picture's width has room for. Fewer samples leave its right part
  // empty; more samples share the whole width.
  int span = 0;

  int samples() const;

  // Copies the values of `count` samples (at least one) from sample `start` on and leaves the
  // scales alone. Throws BoundsError and copies nothing if a sample lies outside the arrays.
  void copy_view(const Recording& recording, std::int32_t start, std::int32_t count);
};

// A picture's size in device pixels and in twips.
struct PictureSize {
  QSize pixels;
  float width = 0;
  float height = 0;
  // Line width of grid and curves in device pixels: one window pixel, rounded down, but at least 1.
  int line = 1;
};
// `logical` is the size in window pixels, `device` the size in device pixels.
PictureSize picture_size(QSize logical, QSize device, double device_pixel_ratio);

// Device pixels per twip along one side of the picture, less one line: the lines at both ends then
// lie just inside the edges.
inline float pixels_per_twip(int pixels, float twips, int line) {
  return static_cast<float>(pixels - line) / twips;
}

// Converts twips to the nearest whole pixel; half a pixel rounds right and down. Limits the result
// to 1048576 pixels either way: whole numbers stay exact in single precision, and the slope of a
// line through the picture does not visibly change.
inline int whole_pixel(float twips, float pixels_per_twip) {
  constexpr float farthest = 1048576.0F;
  float place = twips * pixels_per_twip + 0.5F;
  place = std::max(-farthest, place);
  place = std::min(farthest, place);
  const int towards_zero = static_cast<int>(place);
  return towards_zero - static_cast<int>(place < static_cast<float>(towards_zero));
}

// The pixel column of each of `samples` samples in a picture whose width holds `span` samples, or
// `samples` if that is more. The first and the last of these lie on the picture's edges.
std::vector<int> sample_columns(int samples, const PictureSize& size, int span = 0);

// Converts a channel's value to its pixel row. The scale fills the picture from its first row to
// its last, lowered by the slot's shift; values beyond it lie outside, at most 1048576 pixels away.
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

// The first pixel of each grid line along one side of the picture.
std::vector<int> grid_lines(int pixels, float twips, int line);

struct PictureColours {
  QRgb background;
  // Colour of the edge around the curve that is brought forward.
  QRgb edge;
};

// Keeps the curves and draws them whenever a picture is needed.
class GraphPicture {
 public:
  // Gives the curves to show from now on; the caller fills them. Before the first call the picture
  // is empty, without a grid.
  GraphCurves& curves_to_fill();
  const GraphCurves& curves() const { return curves_; }

  // Draws this slot's curve wide, with an edge, over the others, which become thin and pale.
  // Without a slot all curves look alike.
  void bring_forward(std::optional<int> slot) { forward_ = slot; }
  std::optional<int> forward() const { return forward_; }

  // Fills `image`, which has this size and 32 bits per pixel.
  void draw(QImage& image, const PictureSize& size, const PictureColours& colours) const;

 private:
  void draw_one_forward(QImage& image, const PictureSize& size,
                        const PictureColours& colours) const;

  GraphCurves curves_;
  bool has_curves_ = false;
  std::optional<int> forward_;
};
