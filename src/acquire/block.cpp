#include "acquire/block.h"

#include <algorithm>

#include "acquire/segments.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/times.h"
#include "device/answer.h"

namespace {

constexpr int kind_at = 1;    // 0 marks a short block
constexpr int length_at = 2;  // of the data of a short block, in bytes
constexpr int data_at = 3;
constexpr int full_length = 256;
constexpr int reading_size = 2;

// The block as its samples lie in the answer: newest first, so the first in time stands last.
struct BlockData {
  const QByteArray& answer;
  int channels;
  int length;  // of the data in bytes

  float value(int sample, int slot) const {
    const int low = data_at + length + reading_size * (slot - channels * (sample + 1));
    return rounded_to_2_decimals(value_at(answer, low));
  }
};

void place_sample(const BlockData& data, int sample, std::int64_t index, const QDateTime& time,
                  DownloadedSamples& samples) {
  if (index < 0 || index >= Recording::max_samples) return;
  const auto n = static_cast<std::size_t>(index);
  samples.times[n] = stamp_text(time);
  for (int slot = 0; slot < data.channels; ++slot) {
    skip_on_error([&] {
      samples.values[n * Recording::channel_slots + static_cast<std::size_t>(slot)] =
          data.value(sample, slot);
    });
  }
}

}  // namespace

DownloadedSamples::DownloadedSamples()
    : times(Recording::max_samples), values(Recording::max_samples * Recording::channel_slots) {}

void place_block(const QByteArray& answer, const BlockPlace& place, DownloadedSamples& samples) {
  const int short_length = byte_at(answer, length_at);
  const bool full = byte_at(answer, kind_at) != 0;
  const int length = full ? full_length : short_length;
  const BlockData data = {answer, place.channels, length};
  const double per_segment = samples_per_segment(place.channels);
  const int short_count = length / (reading_size * place.channels);
  const double stored = full ? per_segment : short_count;
  const double newer_blocks =
      full ? (place.position + 1) * per_segment : place.position * per_segment + stored;
  QDateTime time = place.first;
  // Compared unrounded: a full block of three channels, 42.67 samples, stores 42 of them.
  for (int j = 0; j <= stored - 1; ++j) {
    const auto index =
        static_cast<std::int64_t>(round_half_even(place.samples_wanted - newer_blocks + j));
    place_sample(data, j, index, time, samples);
    time = time.addSecs(place.interval);
  }
  samples.count = to_int32(samples.count + stored);
}
