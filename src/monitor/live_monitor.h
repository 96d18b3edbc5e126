// One window's live monitoring: what a polling cycle does with an answer, or with none.
#pragma once

#include "monitor/channel_status.h"
#include "monitor/live_sheets.h"

class LiveMonitor {
 public:
  LiveMonitor() : live_sheet(buffer) {}

  // Adds a reading to the buffer and its sheet, and to the alarm sheet where channels are out of
  // their limits.
  void add(const QString& time, const LiveReading& values,
           const std::array<AlarmLimits, 4>& limits);

  // 15000 readings have come since SaveCounter was 0.
  bool save_due() const;

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
