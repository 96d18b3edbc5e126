// The recorder's memory of readings and its division into blocks.
#pragma once

#include <QByteArray>

#include <vector>

#include "simulator/signal.h"

namespace simulator {

// Holds no values: a reading follows from its sample's number, so the counts are enough. The newest
// sample is whole; the oldest may have lost some of its readings to the memory's end.
class Memory {
 public:
  static constexpr int capacity = 32000;      // readings
  static constexpr int block_readings = 128;  // of all channels together

  // Held readings of `channels` (recorder channels 0..3, ascending), at most `capacity`.
  Memory(std::vector<int> channels, int readings);
  Memory() = default;

  int readings() const { return readings_; }
  // Samples since the start of recording, those that have gone included.
  qint64 samples_taken() const { return samples_taken_; }
  // How many more samples fit before the oldest have to go.
  qint64 room() const;
  // Takes in `samples` further samples; beyond the capacity the oldest readings go.
  void add(qint64 samples);

  // The data bytes of block `number`, counted from the newest: 256, fewer in the oldest block,
  // none beyond it. Samples stand newest first, in a sample the channels ascend, low byte first.
  // With three channels 128 readings hold no whole number of samples: the 42 whole samples of the
  // block stand at its end, where readers count back from, and the two readings that belong to
  // samples cut by the block's borders are sent as zeros in front of them.
  QByteArray block(int number, const Signal& signal) const;

 private:
  std::vector<int> channels_;
  int readings_ = 0;
  qint64 samples_taken_ = 0;
};

}  // namespace simulator
