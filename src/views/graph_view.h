// Which samples of the Recording the historical graph shows, which one is at the cursor, and the
// vertical scale of a channel. docs/views.md has the rules.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

// The first sample, 0-based, of a view of `view_count` samples with the slider at `slider` of
// 0..`slider_maximum`. Throws RunTimeError if `slider_maximum` is 0.
std::int32_t view_start(int slider, int slider_maximum, std::int32_t sample_count,
                        std::int32_t view_count);

enum class Zoom { out, in };

// One zoom step multiplies or divides the number of samples in view by this.
inline constexpr double zoom_factor = 1.25;
// The fewest samples that zooming in or choosing a time leaves in view.
inline constexpr std::int32_t least_view = 5;

// The number of samples in view after one zoom step; nothing for a step out of the whole Recording,
// which does nothing at all. Throws ConversionError if the number does not fit.
std::optional<std::int32_t> zoomed(Zoom zoom, std::int32_t view_count, std::int32_t sample_count);

// The sample of the view nearest to `x` of 0..`width` (any unit), counted from the view's start.
// Throws ConversionError if the result is not a 32-bit number.
std::int32_t cursor_sample(float x, float width, std::int32_t view_count);

// The place of a sample of the view, in the unit of `width`; `last` is the number of the view's
// last sample. Computed in double precision, returned in single.
inline float sample_x(std::int32_t sample, double last, float width) {
  return static_cast<float>(sample / last * width);
}

// The same for the cursor. Throws RunTimeError if the view has one sample.
float cursor_x(std::int32_t sample, float width, std::int32_t view_count);

// How the keys move the cursor.
enum class CursorStep { sample_back, sample_on, page_back, page_on, start, end };

// The number of samples that Page Up and Page Down move by: a tenth of the view, at least 1.
std::int32_t page_of(std::int32_t view_count);

// The sample that a step from `sample` leads to, within 0..`count` - 1; `page` is from page_of().
std::int32_t stepped(CursorStep step, std::int32_t sample, std::int32_t page, std::int32_t count);

// The left edge, in twips, of the time shown at the cursor: at the cursor, or a fixed width to its
// left if the time would not fit in the graph.
inline constexpr float time_label_twips = 1530.9F;
float time_label_left(float cursor, float width);

// A scale's labels divide it into this many steps.
inline constexpr int scale_steps = 8;
inline constexpr int labels_per_scale = scale_steps + 1;
// Each channel's curve is drawn this much lower than the one before, on the screen and on paper, so
// that equal values can be told apart.
inline constexpr float channel_shift_twips = 3.0F;
// The label of row 0 (`high`) to 8 (`low`), computed in single precision from the bottom up. Screen
// and paper show the same labels.
QString scale_label(float high, float low, int row);

// The values at the graph's top and bottom edges, and the scale's texts from top to bottom.
struct ChannelScale {
  float high = 0;
  float low = 0;
  std::array<QString, labels_per_scale> labels;
};

// Fixed limits of a scale, in the channel's unit.
struct ScaleLimits {
  float up = 0;
  float down = 0;
};

// The scale of a channel with these `values`, at least one, in view: their extremes with a margin,
// or `limits` where given. Throws RunTimeError if single precision cannot hold it.
ChannelScale channel_scale(std::span<const float> values, const std::optional<ScaleLimits>& limits);
