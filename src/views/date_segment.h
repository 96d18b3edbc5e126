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

// Compares times as texts "YYYY-MM-DD HH:MM:SS", into which it first converts an automatic save's
// stamps. The sample at the end time falls just outside. The view has at least 5 samples; a start
// after the last sample is the last sample. Throws BoundsError if the search leaves the arrays.
DateSegment date_segment(const Recording& recording, const QString& start, const QString& end);
