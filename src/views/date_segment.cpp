#include "views/date_segment.h"

#include <algorithm>

#include "app/recording.h"
#include "base/times.h"
#include "views/graph_view.h"

namespace {

std::int32_t first_at_or_after(const Recording& recording, const QString& time) {
  for (std::int32_t n = 0; n < recording.SampleCount; ++n) {
    if (as_stamp(recording.SampleTimes(n)) >= time) return n;
  }
  return recording.SampleCount;
}

}  // namespace

DateSegment date_segment(const Recording& recording, const QString& start, const QString& end) {
  const std::int32_t first = first_at_or_after(recording, start);
  const std::int32_t last = first_at_or_after(recording, end);
  return {.first = std::clamp(first, 0, std::max(0, recording.SampleCount - 1)),
          .count = std::max(last - first, least_view)};
}
