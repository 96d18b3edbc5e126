// The recorder's memory of readings and its division into blocks.
#pragma once

#include <QByteArray>

#include <vector>

#include "simulator/signal.h"

namespace simulator {

// Stores counts but no values, because a reading follows from its sample's number. The newest
// sample is whole; the oldest may have lost some of its readings at the end of the memory.
class Memory {
 public:
  static constexpr int capacity = 32000;      // readings
  static constexpr int block_readings = 128;  // of all channels together

  // Holds `readings` of `channels` (recorder channels 0..3, ascending), at most `capacity`.
  Memory(std::vector<int> channels, int readings);
  Memory() = default;

  int readings() const { return readings_; }
  // Samples since the start of recording, including those that were dropped.
  qint64 samples_taken() const { return samples_taken_; }
  // The number of samples that fit before the oldest are dropped.
  qint64 room() const;
  // Adds `samples` samples; beyond the capacity the oldest readings are dropped.
  void add(qint64 samples);

  // The data bytes of block `number`, counted from the newest: 256, fewer for the oldest, none
  // beyond it. The newest sample comes first, the channels of a sample ascend, and each reading has
  // its low byte first. With three channels 128 readings are not a whole number of samples: the 42
  // whole samples are at the block's end, from where readers count back. The two readings of
  // samples cut by the block's borders are sent as zeros in front of them.
  QByteArray block(int number, const Signal& signal) const;

 private:
  std::vector<int> channels_;
  int readings_ = 0;
  qint64 samples_taken_ = 0;
};

}  // namespace simulator
