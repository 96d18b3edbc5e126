#include "simulator/memory.h"

#include <algorithm>
#include <limits>

namespace simulator {

namespace {

constexpr int divide_up(int value, int by) {
  return (value + by - 1) / by;
}

}  // namespace

Memory::Memory(std::vector<int> channels, int readings)
    : channels_(std::move(channels)),
      readings_(channels_.empty() ? 0 : std::clamp(readings, 0, capacity)) {
  if (!channels_.empty()) samples_taken_ = divide_up(readings_, static_cast<int>(channels_.size()));
}

qint64 Memory::room() const {
  if (channels_.empty()) return std::numeric_limits<qint64>::max();
  return (capacity - readings_) / static_cast<int>(channels_.size());
}

void Memory::add(qint64 samples) {
  samples_taken_ += samples;
  const qint64 readings = readings_ + samples * static_cast<qint64>(channels_.size());
  readings_ = static_cast<int>(std::min<qint64>(capacity, readings));
}

QByteArray Memory::block(int number, const Signal& signal) const {
  const int channels = static_cast<int>(channels_.size());
  const int begin = number * block_readings;  // readings newer than the block
  const int end = std::min(begin + block_readings, readings_);
  if (channels == 0 || end <= begin) return {};

  QByteArray data;
  for (int back = divide_up(begin, channels); (back + 1) * channels <= end; ++back) {
    for (const int channel : channels_) {
      const std::uint16_t raw = signal(samples_taken_ - 1 - back, channel);
      data += static_cast<char>(raw & 0xFF);
      data += static_cast<char>(raw >> 8);
    }
  }
  const bool full = end - begin == block_readings;
  return full ? data.rightJustified(qsizetype{2} * block_readings, '\0') : data;
}

}  // namespace simulator
