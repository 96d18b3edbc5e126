// What the recorder's memory holds and when each of its segments of 128 readings begins and ends,
// worked out from the recorder's properties. No window, no port.
#pragma once

#include <QDateTime>

#include <vector>

#include "device/properties.h"

// Segments beyond these are not kept.
inline constexpr int max_segments = 251;

// A wrapping recorder whose memory is nearly full is about to erase this many readings.
inline constexpr int nearly_full = 27500;
inline constexpr int about_to_go = 512;

struct Segment {
  QDateTime first;  // time of its first sample
  QDateTime last;   // time of its last sample
};

struct MemoryMap {
  int channels = 0;
  int interval = 1;        // seconds between samples
  int samples_wanted = 0;  // samples a channel that the whole memory yields
  QDateTime start;
  QDateTime end;
  // The number of segments in the memory; `segments` holds at most max_segments of them, the
  // oldest first.
  int segment_count = 0;
  std::vector<Segment> segments;
};

// `channels` (1..4) take part in the recording; `now` is the wall time at which the properties
// came. Times are kept to the millisecond, since a segment of three channels takes no whole number
// of samples; whole_second gives the second that is shown.
MemoryMap map_memory(const RecorderProperties& properties, int channels, const QDateTime& now);

// The nearest whole second, ties to even.
QDateTime whole_second(const QDateTime& time);

// Samples a channel that segments first..last (0-based, inclusive) of the memory yield.
int samples_in(const MemoryMap& memory, int first, int last);
