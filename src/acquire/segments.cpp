#include "acquire/segments.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "device/stored_block.h"

namespace {

QDateTime later(const QDateTime& time, double seconds) {
  return time.addMSecs(std::llround(seconds * 1000.0));
}

std::vector<Segment> list_segments(const MemoryMap& memory, int readings) {
  const double per_segment = samples_per_block(memory.channels);
  const int rest = readings % readings_per_block;
  const double first_samples =
      rest != 0 ? static_cast<double>(rest) / memory.channels : per_segment;
  std::vector<Segment> segments;
  QDateTime first = memory.start;
  double samples = first_samples;
  for (int k = 0; k < std::min(memory.segment_count, max_segments); ++k) {
    const QDateTime last = later(first, (samples - 1) * memory.interval);
    segments.push_back({first, last});
    first = last.addSecs(memory.interval);
    samples = per_segment;
  }
  return segments;
}

}  // namespace

MemoryMap map_memory(const RecorderProperties& properties, int channels, const QDateTime& now) {
  MemoryMap memory;
  memory.channels = channels;
  memory.interval = properties.record_interval;
  const int all_readings = properties.readings_held;
  int readings = all_readings;
  if (properties.wrap && readings > nearly_full) readings -= about_to_go;
  const double duration = static_cast<double>(memory.interval) * readings / channels;
  if (properties.wrap) {
    memory.end = now.addSecs(-properties.idle_seconds);
    memory.start = later(memory.end, -duration);
  } else {
    memory.start = properties.start;
    if (properties.delayed) memory.start = memory.start.addSecs(properties.startup_delay);
    memory.end = later(memory.start, duration);
  }
  memory.samples_wanted = to_int32(static_cast<double>(readings) / channels);
  // The segments come from the unreduced count, because the memory still holds all of them.
  memory.segment_count =
      all_readings / readings_per_block + (all_readings % readings_per_block != 0 ? 1 : 0);
  memory.segments = list_segments(memory, all_readings);
  return memory;
}

QDateTime whole_second(const QDateTime& time) {
  return QDateTime::fromMSecsSinceEpoch(
      static_cast<qint64>(round_half_even(static_cast<double>(time.toMSecsSinceEpoch()) / 1000.0)) *
          1000,
      Qt::UTC);
}

int samples_in(const MemoryMap& memory, int first, int last) {
  const double per_segment = samples_per_block(memory.channels);
  if (first != 0) return to_int32((last - first + 1) * per_segment);
  return to_int32(memory.samples_wanted - (memory.segment_count - 1 - last) * per_segment);
}
