#include "acquire/segments.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/times.h"
#include "device/answer.h"

namespace {

// A wrapping recorder whose memory is nearly full is about to erase this many readings.
constexpr int nearly_full = 27500;
constexpr int about_to_go = 512;

QDateTime later(const QDateTime& time, double seconds) {
  return time.addMSecs(std::llround(seconds * 1000.0));
}

std::vector<Segment> list_segments(const MemoryMap& memory, int readings) {
  const double per_segment = samples_per_segment(memory.channels);
  const int rest = readings % readings_per_segment;
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

int stored_readings(const QByteArray& answer) {
  return word_at(answer, readings_at);
}

double samples_per_segment(int channels) {
  return static_cast<double>(readings_per_segment) / channels;
}

MemoryMap map_memory(const QByteArray& answer, int channels, const QDateTime& now) {
  MemoryMap memory;
  memory.channels = channels;
  memory.interval = word_at(answer, interval_at) + 1;
  const int all_readings = stored_readings(answer);
  int readings = all_readings;
  const int flags = byte_at(answer, mode_flags_at);
  const bool wraps = (flags & wrap_flag) != 0;
  if (wraps && readings > nearly_full) readings -= about_to_go;
  const double duration = static_cast<double>(memory.interval) * readings / channels;
  if (wraps) {
    memory.end = now.addSecs(-word_at(answer, elapsed_at));
    memory.start = later(memory.end, -duration);
  } else {
    memory.start = wall_time(byte_at(answer, start_at) + 2000, byte_at(answer, start_at + 1),
                             byte_at(answer, start_at + 2), byte_at(answer, start_at + 3),
                             byte_at(answer, start_at + 4), byte_at(answer, start_at + 5));
    if ((flags & delayed_flag) != 0) {
      memory.start = memory.start.addSecs(word_at(answer, delay_at));
    }
    memory.end = later(memory.start, duration);
  }
  memory.samples_wanted = to_int32(static_cast<double>(readings) / channels);
  // The segments come from the unreduced count: they are what the recorder's memory still holds.
  memory.segment_count =
      all_readings / readings_per_segment + (all_readings % readings_per_segment != 0 ? 1 : 0);
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
  const double per_segment = samples_per_segment(memory.channels);
  if (first != 0) return to_int32((last - first + 1) * per_segment);
  return to_int32(memory.samples_wanted - (memory.segment_count - 1 - last) * per_segment);
}
