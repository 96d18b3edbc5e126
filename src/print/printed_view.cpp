#include "print/printed_view.h"

#include <algorithm>

std::vector<int> printed_slots(const PrintedView& view) {
  std::vector<int> slots_to_print;
  for (int slot = 0; slot < view.recording.clamped_channel_count(); ++slot) {
    if (view.chosen[static_cast<std::size_t>(slot)]) slots_to_print.push_back(slot);
  }
  return slots_to_print;
}

int printed_samples(const PrintedView& view) {
  const std::int64_t end = std::min<std::int64_t>(
      std::int64_t{view.start} + view.recording.ViewCount, view.recording.clamped_sample_count());
  return static_cast<int>(std::max<std::int64_t>(0, end - view.start));
}
