// The samples of a download, added block by block and stored in the Recording at the end.
#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

#include "app/recording.h"
#include "device/stored_block.h"

struct DownloadedSamples {
  DownloadedSamples();

  std::vector<QString> times;
  // `Recording::channel_slots` values for each sample.
  std::vector<float> values;
  // The sum of the blocks' sample counts. With three channels each full block counts one sample
  // more than it stores.
  int count = 0;
};

// Where the samples of a block go.
struct BlockPlace {
  int channels = 1;        // 1..4
  int interval = 1;        // seconds
  int samples_wanted = 0;  // of the whole download
  int position = 0;        // 0 for the newest chosen block
  QDateTime first;         // time of its first sample, a whole second
};

// Adds the block's samples. Samples whose index falls outside 0..30000 are dropped; so are readings
// that the block's length byte puts outside its answer.
void add_block(const StoredBlock& block, const BlockPlace& place, DownloadedSamples& samples);

// Stores the samples in the Recording. Those beyond the Recording's bound are dropped and not
// counted.
void store_samples(const DownloadedSamples& samples, Recording& recording);
