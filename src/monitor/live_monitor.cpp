#include "monitor/live_monitor.h"

#include <limits>

#include "monitor/automatic_save.h"

void LiveMonitor::add(const QString& time, const LiveReading& values,
                      const std::array<AlarmLimits, 4>& limits) {
  const OutOfRange out = out_of_range(values, limits, channels_.count);
  live_sheet.begin_push();
  buffer.push(time, values);
  live_sheet.end_push();
  const QString alarm = alarm_text(out, channels_);
  if (out != OutOfRange{}) alarm_sheet.push({buffer.LiveCount(), time, alarm});
  for (std::size_t c = 0; static_cast<int>(c) < channels_.count; ++c) {
    status[c].add(values[c], out[c], time);
  }
  ++SaveCounter;
}

bool LiveMonitor::save_due() const {
  return SaveCounter >= readings_per_save;
}

// Stops at the maximum: an overflow after days of silence would bring back "Link Ok".
void LiveMonitor::count_missed() {
  if (FailCount < std::numeric_limits<std::int16_t>::max()) ++FailCount;
}

void LiveMonitor::set_channels(const LiveChannels& channels) {
  channels_ = channels;
  live_sheet.set_channels(channels);
}
