#include "app/recording.h"

#include <algorithm>

#include "base/errors.h"

Recording::Recording() : times_(max_samples), values_(max_samples * channel_slots) {}

void Recording::throw_out_of_bounds() {
  throw BoundsError("index outside the Recording");
}

int Recording::held_samples() const {
  return std::clamp(SampleCount, 0, max_samples);
}

int Recording::held_channels() const {
  return std::clamp(static_cast<int>(ChannelCount), 0, max_channels);
}
