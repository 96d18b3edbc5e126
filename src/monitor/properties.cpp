#include "monitor/properties.h"

#include "device/answer.h"

namespace {

constexpr int texts_at = 3;

}  // namespace

RecorderProperties decode_properties(const QByteArray& answer) {
  RecorderProperties properties;
  const std::uint8_t flags = byte_at(answer, mode_flags_at);
  // A running recorder reports one bit; a start is requested by others, on purpose.
  properties.recording = (flags & running_flag) != 0;
  if (properties.recording) {
    properties.startup_type =
        (flags & delayed_flag) != 0 ? StartupType::delayed : StartupType::start_up;
  }
  properties.wrap = (flags & wrap_flag) != 0;
  for (std::size_t c = 0; c < properties.channels.size(); ++c) {
    properties.channels[c] = (byte_at(answer, channel_mask_at) >> c & 1) != 0;
  }
  properties.start_time = QStringLiteral("%1-%2-%3  %4:%5:%6")
                              .arg(2000 + byte_at(answer, start_at))
                              .arg(byte_at(answer, start_at + 1))
                              .arg(byte_at(answer, start_at + 2))
                              .arg(byte_at(answer, start_at + 3))
                              .arg(byte_at(answer, start_at + 4))
                              .arg(byte_at(answer, start_at + 5));
  properties.startup_delay = word_at(answer, delay_at);
  properties.record_interval = word_at(answer, interval_at) + 1;
  properties.all_data = word_at(answer, all_data_at);
  properties.readings_held = word_at(answer, readings_at);
  return properties;
}

RecorderTexts decode_texts(const QByteArray& answer) {
  RecorderTexts texts;
  qsizetype index = texts_at;
  for (std::uint8_t& byte : texts.title) byte = byte_at(answer, index++);
  for (std::uint8_t& byte : texts.description) byte = byte_at(answer, index++);
  return texts;
}

QString text_of_units(const std::uint8_t* bytes, int count) {
  QString text;
  for (int i = 0; i + 1 < count; i += 2) {
    const auto unit = static_cast<char16_t>(word(bytes[i], bytes[i + 1]));
    if (unit == 0) break;
    text += QChar(unit);
  }
  // A long text is cut at the field's end, which can fall between the halves of a pair.
  if (!text.isEmpty() && text.back().isHighSurrogate()) text.back() = QChar::ReplacementCharacter;
  return text;
}

double battery_voltage(const QByteArray& answer) {
  return word_at(answer, 3) / 4096.0 * 4.0;
}

ChannelLimits decode_limits(const QByteArray& answer) {
  return {.up = value_at(answer, 5), .down = value_at(answer, 3)};
}
