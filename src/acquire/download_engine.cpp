#include "acquire/download_engine.h"

#include <algorithm>

#include "acquire/kept_blocks.h"
#include "base/clock.h"
#include "base/errors.h"
#include "device/device_table.h"

namespace {

constexpr int pause_after_block_ms = 100;
constexpr int view_after_download = 128;
constexpr Retries properties_retries = {.pause_after_last = true};
// If a slow recorder sends a block twice, the second copy must not be taken for the next block.
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

int DownloadEngine::blocks_kept() const {
  int count = 0;
  for (int position = 0; position < blocks(); ++position) {
    if (kept_ && kept_->find(block_at(position))) ++count;
  }
  return count;
}

bool DownloadEngine::read_blocks(const std::function<void(int position)>& progress) {
  if (!prove_kept_blocks()) return false;
  for (int position = 0; position < blocks(); ++position) {
    progress(position);
    const std::optional<QByteArray> answer = kept_or_read(position);
    if (!answer) return false;
    place(*answer, position);
  }
  return true;
}

// No value when the recorder does not answer or the download is abandoned.
std::optional<QByteArray> DownloadEngine::ask_for_block(int position) {
  const int block = block_at(position);
  auto answer = link_.ask([block] { return block_request(block); }, block_retries, abandoned_);
  if (abandoned_()) return std::nullopt;
  link_.clock().sleep(pause_after_block_ms);
  return answer;
}

std::optional<QByteArray> DownloadEngine::kept_or_read(int position) {
  if (kept_) {
    if (auto kept = kept_->find(block_at(position))) return kept;
  }
  auto answer = ask_for_block(position);
  if (answer && kept_) kept_->keep(block_at(position), *answer);
  return answer;
}

// Drops the kept blocks unless they are proved. Returns false when the recorder does not answer.
bool DownloadEngine::prove_kept_blocks() {
  if (!kept_ || kept_->empty()) return true;
  int most = 0;
  int proof = 0;
  for (int position = 0; position < blocks(); ++position) {
    const int samples = kept_->different_samples(block_at(position));
    if (samples > most) proof = position;
    most = std::max(most, samples);
  }
  bool proved = false;
  if (most >= kept_->samples_for_proof()) {
    const auto answer = ask_for_block(proof);
    if (!answer) return false;
    proved = kept_->same_readings(*kept_->find(block_at(proof)), *answer);
  }
  if (!proved) kept_->start_over();
  return true;
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
  recording.RecorderName = types.type_name(header.recorder_type);
  recording.ChannelCount = static_cast<std::int16_t>(header.channels.size());
  for (std::size_t slot = 0; slot < header.channels.size(); ++slot) {
    const int channel = header.channels[slot];
    const ChannelTexts<QString> texts = recording.channel(slot);
    texts.number = QString::number(channel + 1);
    texts.name = types.channel_name(header.recorder_type, channel);
    texts.unit = types.channel_unit(header.recorder_type, channel);
  }
  store_samples(samples_, recording);
  recording.ViewCount = view_after_download;
}
