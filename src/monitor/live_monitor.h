// One window's live data. Each polling cycle adds the reading that came, or counts a missed answer.
#pragma once

#include "monitor/channel_status.h"
#include "monitor/live_sheets.h"

class LiveMonitor {
 public:
  LiveMonitor() : live_sheet(buffer) {}

  // Adds a reading to the buffer, the live sheet and the channels' statuses; also to the alarm
  // sheet if a channel is out of its limits. Counts it for the next save.
  void add(const QString& time, const LiveReading& values,
           const std::array<AlarmLimits, 4>& limits);

  // Whether 15000 readings have been added since SaveCounter was last set to 0.
  bool save_due() const;

  // Count a cycle without an answer, and one with an answer.
  void count_missed();
  void count_answered() { FailCount = 0; }
  // A single missed cycle does not count as a link error.
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
