// The download without windows: asks a recorder for its properties and its stored readings and
// fills a Recording. The caller chooses the segments and shows the progress.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "acquire/downloaded_samples.h"
#include "acquire/segments.h"
#include "device/recorder_link.h"

class DeviceTable;
class KeptBlocks;

// The fields of a Recording that are not in the blocks: who recorded what.
struct RecordingHeader {
  QString title;
  int recorder_type = 0;      // row of the device table
  std::vector<int> channels;  // the recorder's channel 0..3 in each slot
};

class DownloadEngine {
 public:
  // Calls `abandoned` after every wait; if it returns true, the download stops.
  DownloadEngine(RecorderLink& link, std::function<bool()> abandoned);

  // Asks the recorder for its properties, three times if need be; no value when it does not answer.
  // In wrap mode the times of all readings depend on the moment of the answer.
  std::optional<RecorderProperties> read_properties();

  // Computes the memory of a recorder with these properties, of which `channels` (1..4) channels
  // record. Takes the time from the clock, so call it as soon as the properties have come.
  const MemoryMap& map(const RecorderProperties& properties, int channels);

  // Chooses segments first..last (0-based, inclusive) of the memory; first <= last.
  void choose(int first, int last);
  int blocks() const { return last_ - first_ + 1; }

  // From now on read_blocks() does not ask for blocks that `kept` has. It keeps new ones there and
  // throws FileError when it cannot. `kept` must outlive the engine.
  void keep_in(KeptBlocks& kept) { kept_ = &kept; }
  // How many of the chosen blocks are kept now.
  int blocks_kept() const;

  // Reads the chosen blocks, newest first. Calls `progress` with the position of each beforehand.
  // Returns false when the recorder does not answer or the download is abandoned. Kept blocks count
  // only if the recorder still has the same readings: the one that varies most is asked for again
  // to prove it. If all are too steady for a proof, none counts.
  bool read_blocks(const std::function<void(int position)>& progress);

  // Stores what was read in the Recording, field by field. Its view count becomes 128 samples.
  void store(const RecordingHeader& header, const DeviceTable& types, Recording& recording) const;

 private:
  // The recorder numbers its blocks from the newest, the memory its segments from the oldest.
  int block_at(int position) const { return position + memory_.segment_count - 1 - last_; }
  std::optional<QByteArray> ask_for_block(int position);
  std::optional<QByteArray> kept_or_read(int position);
  bool prove_kept_blocks();
  void place(const QByteArray& answer, int position);

  RecorderLink& link_;
  std::function<bool()> abandoned_;
  MemoryMap memory_;
  int first_ = 0;
  int last_ = -1;
  int samples_wanted_ = 0;
  KeptBlocks* kept_ = nullptr;
  DownloadedSamples samples_;
};
