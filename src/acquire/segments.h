// Computes from the recorder's properties what its memory holds, and when each of its segments of
// 128 readings begins and ends. Needs no window and no port.
#pragma once

#include <QDateTime>

#include <vector>

#include "device/properties.h"

// The map keeps no more segments than this.
inline constexpr int max_segments = 251;

// A wrapping recorder with more than `nearly_full` readings will soon erase `about_to_go` of them.
inline constexpr int nearly_full = 27500;
inline constexpr int about_to_go = 512;

struct Segment {
  QDateTime first;  // time of its first sample
  QDateTime last;   // time of its last sample
};

struct MemoryMap {
  int channels = 0;
  int interval = 1;        // seconds between samples
  int samples_wanted = 0;  // samples per channel in the whole memory
  QDateTime start;
  QDateTime end;
  // The number of segments in the memory; `segments` holds at most max_segments of them, the
  // oldest first.
  int segment_count = 0;
  std::vector<Segment> segments;
};

// `channels` (1..4) take part in the recording; `now` is the wall time at which the properties
// came. Times are kept to the millisecond, because with three channels a segment is not a whole
// number of samples; whole_second() gives the second to show.
MemoryMap map_memory(const RecorderProperties& properties, int channels, const QDateTime& now);

// The nearest whole second, ties to even.
QDateTime whole_second(const QDateTime& time);

// The samples per channel in segments first..last (0-based, inclusive) of the memory.
int samples_in(const MemoryMap& memory, int first, int last);
