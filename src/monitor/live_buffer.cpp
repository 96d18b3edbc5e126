#include "monitor/live_buffer.h"

#include <algorithm>

#include "base/errors.h"

namespace {

bool is_channel(int channel) {
  return channel >= 0 && channel < static_cast<int>(std::tuple_size_v<LiveReading>);
}

}  // namespace

void LiveBuffer::push(const QString& time, const LiveReading& values) {
  if (LiveCount() == capacity) {
    times_.pop_front();
    values_.pop_front();
    ++dropped_;
  }
  times_.push_back(time);
  values_.push_back(values);
}

void LiveBuffer::require(int slot) const {
  if (slot < 0 || slot >= LiveCount()) throw BoundsError("no reading in this slot");
}

const QString& LiveBuffer::LiveTimes(int slot) const {
  require(slot);
  return times_[slot];
}

const LiveReading& LiveBuffer::reading(int slot) const {
  require(slot);
  return values_[slot];
}

float LiveBuffer::LiveValues(int slot, int channel) const {
  if (!is_channel(channel)) throw BoundsError("no such channel");
  return reading(slot)[static_cast<std::size_t>(channel)];
}

CurveSamples LiveBuffer::samples(int channel, int first, int count) const {
  const int shown = std::min(count, LiveCount() - first);
  if (!is_channel(channel) || first < 0 || shown < 1) return {};
  return {&values_[first][static_cast<std::size_t>(channel)], std::tuple_size_v<LiveReading>,
          shown};
}
