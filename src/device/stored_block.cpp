#include "device/stored_block.h"

#include "device/answer_bytes.h"

namespace {

constexpr int kind_at = 1;    // 0 marks a short block
constexpr int length_at = 2;  // of a short block's data, in bytes
constexpr int data_at = 3;

}  // namespace

StoredBlock::StoredBlock(const QByteArray& answer, int channels)
    : answer_(answer),
      channels_(channels),
      full_(byte_at(answer, kind_at) != 0),
      length_(full_ ? reading_size * readings_per_block : byte_at(answer, length_at)) {}

QByteArray StoredBlock::data() const {
  return answer_.mid(data_at, length_);
}

QByteArray with_data(const QByteArray& answer, const QByteArray& data) {
  return answer.left(data_at) + data;
}

double StoredBlock::samples() const {
  if (full_) return samples_per_block(channels_);
  const int whole_samples = length_ / (reading_size * channels_);
  return whole_samples;
}

// The samples come newest first, so the first in time is the last in the answer.
double StoredBlock::value(int sample, int slot) const {
  return value_at(answer_, data_at + length_ + reading_size * (slot - channels_ * (sample + 1)));
}
