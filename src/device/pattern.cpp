#include "device/pattern.h"

#include "base/errors.h"
#include "base/numbers.h"
#include "device/mode_flags.h"

namespace {

void set_flags(const PatternSettings& settings, PatternFrame& pattern) {
  pattern[0] = 0;
  pattern[1] = 0;
  for (std::size_t c = 0; c < settings.channels.size(); ++c) {
    if (settings.channels[c]) pattern[1] = static_cast<std::uint8_t>(pattern[1] | 1U << c);
  }
  if (settings.startup_type == StartupType::delayed) pattern[0] |= delayed_flag;
  if (settings.startup_type != StartupType::stop) pattern[0] |= start_flags;
  if (settings.wrap) pattern[0] |= wrap_flag;
}

void set_clock(const QDateTime& now, PatternFrame& pattern) {
  const QDate date = now.date();
  const QTime time = now.time();
  pattern[2] = to_byte(date.year() - 2000);
  pattern[3] = to_byte(date.month());
  pattern[4] = to_byte(date.day());
  pattern[5] = to_byte(time.hour());
  pattern[6] = to_byte(time.minute());
  pattern[7] = to_byte(time.second());
}

// An interval of 0 seconds becomes -1, whose low byte is 255 and whose high byte is 0.
void set_word(std::int32_t value, std::uint8_t& low, std::uint8_t& high) {
  low = static_cast<std::uint8_t>(value & 0xFF);
  high = to_byte(value / 256);
}

}  // namespace

void encode_pattern(const PatternSettings& settings, const QDateTime& now, PatternFrame& pattern) {
  set_flags(settings, pattern);
  if (settings.startup_type != StartupType::stop) set_clock(now, pattern);
  set_word(to_int16(static_cast<double>(settings.startup_delay)), pattern[8], pattern[9]);
  set_word(to_int16(static_cast<double>(settings.record_interval)) - 1, pattern[10], pattern[11]);
  const std::int32_t all_data = to_int32(to_double(settings.all_data));
  if (all_data < 0) throw ConversionError("negative number of samples");
  set_word(all_data, pattern[12], pattern[13]);
}
