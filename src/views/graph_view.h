// Where the historical graph stands in the Recording: the run of samples that it shows, the sample
// at the cursor, the vertical scale of a channel. The rules are in docs/views.md.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <span>

// First sample of a view of `view_count` samples, 0-based. The slider stands at `slider` of
// 0..`slider_maximum`. Throws RunTimeError when the slider has no range.
std::int32_t view_start(int slider, int slider_maximum, std::int32_t sample_count,
                        std::int32_t view_count);

enum class Zoom { out, in };

// A step of zoom multiplies or divides the number of samples in view by this.
inline constexpr double zoom_factor = 1.25;
// The fewest samples that zooming in or choosing a time leaves in view.
inline constexpr std::int32_t least_view = 5;

// The number of samples in view after one step of zoom; nothing where the step does nothing at all
// (out of the whole Recording). Throws ConversionError when the number does not fit.
std::optional<std::int32_t> zoomed(Zoom zoom, std::int32_t view_count, std::int32_t sample_count);

// The sample of the view nearest to `x` of 0..`width` (any unit), counted from the view's start.
// Throws ConversionError when it is no number.
std::int32_t cursor_sample(float x, float width, std::int32_t view_count);

// The place of a sample of the view in the unit of `width`; `last` is the number of its last one.
// Computed in double precision, kept in single.
inline float sample_x(std::int32_t sample, double last, float width) {
  return static_cast<float>(sample / last * width);
}

// The same for the cursor. Throws RunTimeError for a view of one sample.
float cursor_x(std::int32_t sample, float width, std::int32_t view_count);

// How the keys move the cursor.
enum class CursorStep { sample_back, sample_on, page_back, page_on, start, end };

// What Page Up and Page Down move by: a tenth of the view, at least a sample.
std::int32_t page_of(std::int32_t view_count);

// The sample of 0..`count` - 1 that a step from `sample` leads to.
std::int32_t stepped(CursorStep step, std::int32_t sample, std::int32_t page, std::int32_t count);

// The left edge of the time shown at the cursor, in twips: at the cursor, or a fixed width to the
// left of it where it would run out of the graph.
inline constexpr float time_label_twips = 1530.9F;
float time_label_left(float cursor, float width);

// A scale's labels divide it into this many steps.
inline constexpr int scale_steps = 8;
inline constexpr int labels_per_scale = scale_steps + 1;
// Each channel's curve is drawn this much lower than the one before, on the screen and on paper, so
// that equal values can be told apart.
inline constexpr float channel_shift_twips = 3.0F;
// The label at row 0 (`high`) to 8 (`low`), the same on the screen and on paper: computed in single
// precision from the bottom up.
QString scale_label(float high, float low, int row);

// The values at the graph's top and bottom edge, and the texts of the scale from top to bottom.
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

// The scale of one channel whose samples in view have these `values`, at least one: from their
// extremes with a margin, or as `limits` say. Throws RunTimeError where single precision is too
// short for it.
ChannelScale channel_scale(std::span<const float> values, const std::optional<ScaleLimits>& limits);
