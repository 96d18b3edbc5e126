#include "app/recording.h"

#include <algorithm>

#include "app/errors.h"

namespace {

std::size_t checked(std::int64_t index, int bound) {
  if (index < 0 || index >= bound) throw BoundsError("index outside the Recording");
  return static_cast<std::size_t>(index);
}

}  // namespace

Recording::Recording() : times_(max_samples), values_(max_samples * channel_slots) {}

QString& Recording::SampleTimes(std::int64_t sample) {
  return times_[checked(sample, max_samples)];
}

const QString& Recording::SampleTimes(std::int64_t sample) const {
  return times_[checked(sample, max_samples)];
}

float& Recording::SampleValues(std::int64_t sample, std::int64_t slot) {
  return values_[checked(sample, max_samples) * channel_slots + checked(slot, channel_slots)];
}

float Recording::SampleValues(std::int64_t sample, std::int64_t slot) const {
  return values_[checked(sample, max_samples) * channel_slots + checked(slot, channel_slots)];
}

int Recording::held_samples() const {
  return std::clamp(SampleCount, 0, max_samples);
}

int Recording::held_channels() const {
  return std::clamp(static_cast<int>(ChannelCount), 0, max_channels);
}
