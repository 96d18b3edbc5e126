// One window's live monitoring: what a polling cycle does with an answer, or with none.
#pragma once

#include "monitor/channel_status.h"
#include "monitor/live_sheets.h"

class LiveMonitor {
 public:
  LiveMonitor() : live_sheet(buffer) {}

  // Takes a reading into the buffer and its sheet, and where channels are out of their limits into
  // the alarm sheet. True when the buffer is to be saved: after every 15000 readings.
  bool add(const QString& time, const LiveReading& values,
           const std::array<AlarmLimits, 4>& limits);

  // A cycle without an answer; one with an answer.
  void count_missed();
  void count_answered() { FailCount = 0; }
  // One missed cycle is tolerated silently.
  bool link_ok() const { return FailCount < 2; }

  void set_channels(const LiveChannels& channels);
  const LiveChannels& channels() const { return channels_; }

  LiveBuffer buffer;
  LiveSheet live_sheet;
  AlarmSheet alarm_sheet;
  std::array<ChannelStatus, 4> status;
  std::int32_t SaveCounter = 0;
  std::int16_t FailCount = 0;

 private:
  LiveChannels channels_;
};
