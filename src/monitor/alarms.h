// Alarms of live polling: which channels are out of their limits, and the list of such readings.
#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <optional>

#include "monitor/live_channels.h"
#include "monitor/sliding_window.h"

// A channel's limits in its unit. A limit that is not a number never raises an alarm.
struct AlarmLimits {
  std::optional<float> up;
  std::optional<float> down;
};

AlarmLimits alarm_limits(QStringView up, QStringView down);

// Whether a value is above the upper or below the lower limit; one equal to a limit is in range.
bool out_of_range(float value, const AlarmLimits& limits);

// Which of the first `count` channels are out of range; false for the others.
using OutOfRange = std::array<bool, 4>;
OutOfRange out_of_range(const LiveReading& reading, const std::array<AlarmLimits, 4>& limits,
                        int count);

// The name of each channel out of range, each followed by "Out Of Range" and four blanks; empty
// if all are in range.
QString alarm_text(const OutOfRange& out, const LiveChannels& channels);

// The newest alarms, oldest first.
class AlarmList {
 public:
  static constexpr int capacity = 15000;

  struct Alarm {
    int number = 0;  // of the live reading, at the time of the alarm
    QString time;
    QString text;
  };

  bool full() const { return count() == capacity; }
  // Drops the oldest alarm and renumbers the others 1, 2 and so on. The list must not be empty.
  void drop_oldest();
  void push(const Alarm& alarm) { alarms_.push_back(alarm); }

  int count() const { return alarms_.size(); }
  // Row 0 is the oldest. Both throw BoundsError for a row outside 0..count() - 1.
  const Alarm& at(int row) const;
  int number(int row) const;

 private:
  SlidingWindow<Alarm> alarms_;
  int renumbered_ = 0;  // the number of leading rows that are numbered by their place
};
