// The download without windows: asks a recorder for its properties and its stored readings and
// fills a Recording. Whoever runs it chooses the segments and shows what goes on.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "acquire/downloaded_samples.h"
#include "acquire/segments.h"
#include "device/recorder_link.h"

class DeviceTable;
class KeptBlocks;

// Who recorded what: the Recording's fields that no block carries.
struct RecordingHeader {
  QString title;
  int recorder_type = 0;      // row of the device table
  std::vector<int> channels;  // the recorder's channel 0..3 in each slot
};

class DownloadEngine {
 public:
  // `abandoned` is asked after every wait; when it says yes the download ends where it is.
  DownloadEngine(RecorderLink& link, std::function<bool()> abandoned);

  // Asks the recorder for its properties, three times if need be; no value when it does not answer.
  // The times of all readings hang on the moment of the answer.
  std::optional<RecorderProperties> read_properties();

  // Works out the memory of a recorder with these properties, of which `channels` (1..4) channels
  // record; to be called at once when they have come.
  const MemoryMap& map(const RecorderProperties& properties, int channels);

  // Chooses segments first..last (0-based, inclusive) of the memory; first <= last.
  void choose(int first, int last);
  int blocks() const { return last_ - first_ + 1; }

  // From now on blocks that `kept` has are not asked for, and those that come are kept there; it
  // outlives the engine. Throws FileError when they cannot be kept.
  void keep_in(KeptBlocks& kept) { kept_ = &kept; }
  // How many of the chosen blocks are kept now.
  int blocks_kept() const;

  // Reads the chosen blocks, newest first. `progress` hears the position of each before it is asked
  // for. False when the recorder does not answer or the download is abandoned. Kept blocks count
  // only if the recorder still has the same readings, for which it is asked again for the one that
  // varies most; where all are too steady to prove it, none counts.
  bool read_blocks(const std::function<void(int position)>& progress);

  // Makes what was read the Recording, field by field. The views then show its first 128 samples.
  void store(const RecordingHeader& header, const DeviceTable& types, Recording& recording) const;

 private:
  // The recorder counts its blocks from the newest, the memory its segments from the oldest.
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
