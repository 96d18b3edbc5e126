#include "views/graph_view.h"

#include <algorithm>
#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "views/extremes.h"

namespace {

// In the channel's unit: the margin above and below an automatic scale, the range below which a
// scale is too narrow for all labels, and the margin added to such a scale.
constexpr float automatic_margin = 5.0F;
constexpr float narrow_range = 0.08F;
constexpr float narrow_margin = 0.5F;

}  // namespace

// The test for the end multiplies by the number of samples, the position by one less. This is on
// purpose: it decides how early the view sticks to the Recording's end.
std::int32_t view_start(int slider, int slider_maximum, std::int32_t sample_count,
                        std::int32_t view_count) {
  if (slider_maximum == 0) throw RunTimeError("division by zero");
  const double position = slider;
  const double maximum = slider_maximum;
  const double samples = sample_count;
  if (position * samples / maximum + view_count > samples) return sample_count - view_count;
  return to_int32((samples - 1) * position / maximum);
}

std::optional<std::int32_t> zoomed(Zoom zoom, std::int32_t view_count, std::int32_t sample_count) {
  if (zoom == Zoom::out && view_count >= sample_count) return std::nullopt;
  const double wanted = zoom == Zoom::in ? view_count / zoom_factor : view_count * zoom_factor;
  return std::min(std::max(to_int32(wanted), least_view), sample_count);
}

std::int32_t cursor_sample(float x, float width, std::int32_t view_count) {
  return to_int32(static_cast<double>(x) / width * (view_count - 1.0));
}

float cursor_x(std::int32_t sample, float width, std::int32_t view_count) {
  if (view_count == 1) throw RunTimeError("division by zero");
  return sample_x(sample, view_count - 1.0, width);
}

std::int32_t page_of(std::int32_t view_count) {
  return std::max(1, to_int32(view_count / 10.0));
}

std::int32_t stepped(CursorStep step, std::int32_t sample, std::int32_t page, std::int32_t count) {
  const std::int32_t last = std::max(0, count - 1);
  switch (step) {
    case CursorStep::sample_back:
      return std::clamp(sample - 1, 0, last);
    case CursorStep::sample_on:
      return std::clamp(sample + 1, 0, last);
    case CursorStep::page_back:
      return std::clamp(sample - page, 0, last);
    case CursorStep::page_on:
      return std::clamp(sample + page, 0, last);
    case CursorStep::start:
      return 0;
    case CursorStep::end:
      return last;
  }
  return sample;
}

float time_label_left(float cursor, float width) {
  return cursor + time_label_twips > width ? cursor - time_label_twips : cursor;
}

QString scale_label(float high, float low, int row) {
  return fixed2(low + (high - low) * static_cast<float>(scale_steps - row) / scale_steps);
}

namespace {

// A scale that overflows single precision cannot be drawn.
void require_finite(float value) {
  if (!std::isfinite(value)) throw RunTimeError("overflow");
}

}  // namespace

ChannelScale channel_scale(std::span<const float> values,
                           const std::optional<ScaleLimits>& limits) {
  auto [bottom, top] = extremes_of(values);
  if (limits) {
    top = limits->up;
    bottom = limits->down;
  } else {
    top += automatic_margin;
    bottom -= automatic_margin;
  }
  ChannelScale scale;
  const float range = top - bottom;
  require_finite(range);
  if (range >= narrow_range) {
    // The largest number that scale_label() computes with.
    require_finite(range * scale_steps);
    for (int row = 0; row <= scale_steps; ++row) {
      scale.labels[static_cast<std::size_t>(row)] = scale_label(top, bottom, row);
    }
  } else {
    top += narrow_margin;
    bottom -= narrow_margin;
    scale.labels.front() = fixed2(top);
    scale.labels.back() = fixed2(bottom);
  }
  scale.high = top;
  scale.low = bottom;
  return scale;
}
