// A run of samples chosen by its first and last time.
#pragma once

#include <QString>

#include <cstdint>

class Recording;

// The view that shows the samples from one time to another: its first sample and how many.
struct DateSegment {
  std::int32_t first = 0;
  std::int32_t count = 0;
};

// Times are compared as texts "YYYY-MM-DD HH:MM:SS"; an automatic save's stamps are brought into
// that form first. The sample at the end time itself falls just outside. At least 5 samples; a
// start after the last sample is the last sample. Throws BoundsError when the search runs out of
// what the Recording can hold.
DateSegment date_segment(const Recording& recording, const QString& start, const QString& end);
