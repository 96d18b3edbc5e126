#include "device/properties.h"

#include "base/times.h"
#include "device/answer_bytes.h"
#include "device/mode_flags.h"

namespace {

constexpr int mode_flags_at = 3;
constexpr int channel_mask_at = 4;
constexpr int start_at = 5;  // year - 2000, month, day, hour, minute, second: a byte each
constexpr int delay_at = 11;
constexpr int interval_at = 13;
constexpr int all_data_at = 15;
constexpr int idle_at = 17;
constexpr int readings_at = 19;

void decode_flags(std::uint8_t flags, RecorderProperties& properties) {
  properties.delayed = (flags & delayed_flag) != 0;
  properties.wrap = (flags & wrap_flag) != 0;
  // The recorder reports with one bit that it runs; a start is requested with other bits.
  properties.recording = (flags & running_flag) != 0;
  if (properties.recording) {
    properties.startup_type = properties.delayed ? StartupType::delayed : StartupType::start_up;
  }
}

}  // namespace

RecorderProperties decode_properties(const QByteArray& answer) {
  RecorderProperties properties;
  decode_flags(byte_at(answer, mode_flags_at), properties);
  for (std::size_t c = 0; c < properties.channels.size(); ++c) {
    properties.channels[c] = (byte_at(answer, channel_mask_at) >> c & 1) != 0;
  }
  std::array<int, 6> start{};
  for (std::size_t i = 0; i < start.size(); ++i) {
    start[i] = byte_at(answer, start_at + static_cast<qsizetype>(i));
  }
  start[0] += 2000;
  properties.start = wall_time({start[0], start[1], start[2], start[3], start[4], start[5]});
  properties.start_text = QStringLiteral("%1-%2-%3  %4:%5:%6")
                              .arg(start[0])
                              .arg(start[1])
                              .arg(start[2])
                              .arg(start[3])
                              .arg(start[4])
                              .arg(start[5]);
  properties.startup_delay = word_at(answer, delay_at);
  properties.record_interval = word_at(answer, interval_at) + 1;
  properties.all_data = word_at(answer, all_data_at);
  properties.idle_seconds = word_at(answer, idle_at);
  properties.readings_held = word_at(answer, readings_at);
  return properties;
}
