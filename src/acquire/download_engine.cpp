#include "acquire/download_engine.h"

#include "base/clock.h"
#include "base/errors.h"
#include "device/device_table.h"

namespace {

constexpr int pause_after_block_ms = 100;
constexpr int view_after_download = 128;
constexpr Retries properties_retries = {.pause_after_last = true};
// A block that a slow recorder sends twice would put its readings in the place of the next one's.
constexpr Retries block_retries = {.pause_after_last = true, .await_late_answers = true};

}  // namespace

DownloadEngine::DownloadEngine(RecorderLink& link, std::function<bool()> abandoned)
    : link_(link), abandoned_(std::move(abandoned)) {}

std::optional<RecorderProperties> DownloadEngine::read_properties() {
  const auto answer = link_.ask(properties_request, properties_retries, abandoned_);
  if (!answer || abandoned_()) return std::nullopt;
  return decode_properties(*answer);
}

const MemoryMap& DownloadEngine::map(const RecorderProperties& properties, int channels) {
  memory_ = map_memory(properties, channels, link_.clock().now());
  return memory_;
}

void DownloadEngine::choose(int first, int last) {
  first_ = first;
  last_ = last;
  samples_wanted_ = samples_in(memory_, first, last);
}

bool DownloadEngine::read_blocks(const std::function<void(int position)>& progress) {
  for (int position = 0; position < blocks(); ++position) {
    progress(position);
    const std::optional<QByteArray> answer = read_block(position);
    if (abandoned_()) return false;
    link_.clock().sleep(pause_after_block_ms);
    if (!answer) return false;
    place(*answer, position);
  }
  return true;
}

// The recorder counts its blocks from the newest, the memory its segments from the oldest.
std::optional<QByteArray> DownloadEngine::read_block(int position) {
  const int block = position + memory_.segment_count - 1 - last_;
  return link_.ask([block] { return block_request(block); }, block_retries, abandoned_);
}

void DownloadEngine::place(const QByteArray& answer, int position) {
  const Segment& segment = memory_.segments.at(static_cast<std::size_t>(last_ - position));
  const BlockPlace place = {.channels = memory_.channels,
                            .interval = memory_.interval,
                            .samples_wanted = samples_wanted_,
                            .position = position,
                            .first = whole_second(segment.first)};
  add_block(StoredBlock(answer, memory_.channels), place, samples_);
}

void DownloadEngine::store(const RecordingHeader& header, const DeviceTable& types,
                           Recording& recording) const {
  recording.Title = header.title;
  recording.RecorderName = types.text(0, header.recorder_type);
  recording.ChannelCount = static_cast<std::int16_t>(header.channels.size());
  for (std::size_t slot = 0; slot < header.channels.size(); ++slot) {
    const int channel = header.channels[slot];
    recording.ChannelInfo[0][slot] = QString::number(channel + 1);
    recording.ChannelInfo[1][slot] = types.text(2 * channel + 3, header.recorder_type);
    recording.ChannelInfo[2][slot] = types.text(2 * channel + 4, header.recorder_type);
  }
  store_samples(samples_, recording);
  recording.ViewCount = view_after_download;
}
