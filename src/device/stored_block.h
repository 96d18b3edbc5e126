// The answer to a block request: 128 of the readings that the recorder has stored, fewer in a short
// block (docs/protocol.md).
#pragma once

#include <QByteArray>

class StoredBlock {
 public:
  // A block of a recording of `channels` channels, 1..4. Throws BoundsError for an answer that ends
  // before its length byte.
  StoredBlock(const QByteArray& answer, int channels);

  bool full() const { return full_; }
  // The readings' bytes, newest sample first. Fewer than they should be where the answer ends
  // early.
  QByteArray data() const;
  // The number of samples that the block adds to a recording. It is not whole for a full block of
  // three channels.
  double samples() const;

  // The reading of sample `sample` (0 for the first in time) on channel slot `slot`, in the
  // channel's unit. Throws BoundsError where the block's length byte puts it outside the answer.
  double value(int sample, int slot) const;

 private:
  QByteArray answer_;
  int channels_;
  bool full_;
  int length_;  // of the data in bytes
};

inline constexpr int readings_per_block = 128;
// Bytes of a reading in a block's data, and of a whole answer with its check byte.
inline constexpr int reading_size = 2;
inline constexpr int block_answer_size = 260;

// The answer with the data of a full block in place of its own, without a check byte.
QByteArray with_data(const QByteArray& answer, const QByteArray& data);

// The number of samples in one full block.
constexpr double samples_per_block(int channels) {
  return static_cast<double>(readings_per_block) / channels;
}
