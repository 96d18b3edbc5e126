#include "app/recording.h"

#include <algorithm>

#include "base/errors.h"

Recording::Recording() : times_(max_samples), values_(max_samples * channel_slots) {}

void Recording::throw_out_of_bounds() {
  throw BoundsError("index outside the Recording");
}

int Recording::clamped_sample_count() const {
  return std::clamp(SampleCount, 0, max_samples);
}

int Recording::clamped_channel_count() const {
  return std::clamp(static_cast<int>(ChannelCount), 0, max_channels);
}
