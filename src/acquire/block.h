// Where each reading of a block answer goes among the downloaded samples, and what it says.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

#include "app/recording.h"

// The samples of a download, filled block by block and copied into the Recording at its end.
struct DownloadedSamples {
  DownloadedSamples();

  std::vector<QString> times;
  // `Recording::channel_slots` values a sample.
  std::vector<float> values;
  // What the blocks have added to the sample count; with three channels each full block counts one
  // sample more than it stores.
  int count = 0;
};

struct BlockPlace {
  int channels = 1;        // 1..4
  int interval = 1;        // seconds
  int samples_wanted = 0;  // of the whole download
  int position = 0;        // 0 for the newest chosen block
  QDateTime first;         // time of its first sample, a whole second
};

// Decodes a block answer of 260 bytes. Samples whose index falls outside 0..30000 are dropped;
// so are readings that an answer's length byte puts outside the answer.
void place_block(const QByteArray& answer, const BlockPlace& place, DownloadedSamples& samples);
