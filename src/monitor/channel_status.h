// The value, extremes and last alarm of each channel since the window opened, and the nine labels
// that show them.
#pragma once

#include <QString>

#include <array>

#include "monitor/alarms.h"
#include "monitor/live_channels.h"

class ChannelStatus {
 public:
  void add(float value, bool out_of_range, const QString& time);

  // Whether the last value was out of its limits.
  bool alarmed() const { return alarmed_; }

  // The texts for the labels. They are empty before the first reading; last_alarm() is empty before
  // the first alarm.
  QString value() const;
  QString maximum() const;
  QString minimum() const;
  const QString& last_alarm() const { return last_alarm_; }

 private:
  bool seen_ = false;
  bool alarmed_ = false;
  float value_ = 0;
  float maximum_ = 0;
  float minimum_ = 0;
  QString last_alarm_;
};

inline constexpr int labels_per_channel = 9;
enum ChannelLabel {
  number_label,
  name_label,
  unit_label,
  value_label,
  up_limit_label,
  down_limit_label,
  maximum_label,
  minimum_label,
  last_alarm_label
};
using ChannelLabels = std::array<QString, labels_per_channel>;

// The captions above the labels, in the order of ChannelLabel.
const ChannelLabels& channel_captions();

// The labels of channel 0..3. They show the limits as typed, because alarms use the typed limits.
ChannelLabels channel_labels(int channel, const LiveChannels& channels, const ChannelStatus& status,
                             const QString& up_limit, const QString& down_limit);
