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

  // Reads the chosen blocks, newest first. `progress` hears the position of each before it is asked
  // for. False when the recorder does not answer or the download is abandoned.
  bool read_blocks(const std::function<void(int position)>& progress);

  // Makes what was read the Recording, field by field. The views then show its first 128 samples.
  void store(const RecordingHeader& header, const DeviceTable& types, Recording& recording) const;

 private:
  std::optional<QByteArray> read_block(int position);
  void place(const QByteArray& answer, int position);

  RecorderLink& link_;
  std::function<bool()> abandoned_;
  MemoryMap memory_;
  int first_ = 0;
  int last_ = -1;
  int samples_wanted_ = 0;
  DownloadedSamples samples_;
};
