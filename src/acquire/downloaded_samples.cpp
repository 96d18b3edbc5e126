#include "acquire/downloaded_samples.h"

#include <algorithm>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/times.h"

namespace {

std::size_t value_index(std::size_t sample, int slot) {
  return sample * Recording::channel_slots + static_cast<std::size_t>(slot);
}

}  // namespace

DownloadedSamples::DownloadedSamples()
    : times(Recording::max_samples), values(Recording::max_samples * Recording::channel_slots) {}

void add_block(const StoredBlock& block, const BlockPlace& place, DownloadedSamples& samples) {
  const double per_block = samples_per_block(place.channels);
  const double newer_samples = block.full() ? (place.position + 1) * per_block
                                            : place.position * per_block + block.samples();
  QDateTime time = place.first;
  // The bound is not rounded: a full block of three channels, 42.67 samples, stores 42 of them.
  for (int j = 0; j <= block.samples() - 1; ++j, time = time.addSecs(place.interval)) {
    const auto index =
        static_cast<std::int64_t>(round_half_even(place.samples_wanted - newer_samples + j));
    if (index < 0 || index >= Recording::max_samples) continue;
    const auto n = static_cast<std::size_t>(index);
    samples.times[n] = stamp_text(time);
    for (int slot = 0; slot < place.channels; ++slot) {
      skip_on_error([&] {
        samples.values[value_index(n, slot)] = rounded_to_2_decimals(block.value(j, slot));
      });
    }
  }
  samples.count = to_int32(samples.count + block.samples());
}

void store_samples(const DownloadedSamples& samples, Recording& recording) {
  const int count = std::min(samples.count, Recording::max_samples);
  for (int n = 0; n < count; ++n) {
    const auto sample = static_cast<std::size_t>(n);
    recording.SampleTimes(n) = samples.times[sample];
    for (int slot = 0; slot < Recording::channel_slots; ++slot) {
      recording.SampleValues(n, slot) = samples.values[value_index(sample, slot)];
    }
  }
  recording.SampleCount = count;
}
