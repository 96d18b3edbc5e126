// The live readings of the Real-time Data window: the newest 15000, oldest first.
#pragma once

#include <QString>

#include <cstdint>

#include "base/curve.h"
#include "device/status.h"
#include "monitor/sliding_window.h"

class LiveBuffer {
 public:
  static constexpr int capacity = 15000;

  // Appends a reading; a full buffer drops its oldest one first. The average cost does not depend
  // on how many readings it holds.
  void push(const QString& time, const LiveReading& values);

  // The number of readings held, 0..15000, in slots 0..LiveCount() - 1.
  int LiveCount() const { return values_.size(); }
  // The time stamp (general date-time text) and values of a slot. They throw BoundsError for a slot
  // outside 0..LiveCount() - 1 and for a channel outside 0..3.
  const QString& LiveTimes(int slot) const;
  const LiveReading& reading(int slot) const;
  float LiveValues(int slot, int channel) const;

  // At most `count` values of a channel, from slot `first` on, or none; valid until push().
  CurveSamples samples(int channel, int first, int count) const;

  // The number of readings dropped so far: slot s holds reading dropped() + s, counted from 0.
  std::int64_t dropped() const { return dropped_; }

 private:
  void require(int slot) const;

  SlidingWindow<QString> times_;
  SlidingWindow<LiveReading> values_;
  std::int64_t dropped_ = 0;
};
