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

  // Appends a reading; a full buffer drops its oldest one first. The cost does not depend on how
  // many there are.
  void push(const QString& time, const LiveReading& values);

  // Readings held, 0..15000, in slots 0..LiveCount() - 1.
  int LiveCount() const { return values_.size(); }
  // Time stamp (general date-time text) and values of a slot. Throw BoundsError outside the slots
  // that are filled, and for a channel outside 0..3.
  const QString& LiveTimes(int slot) const;
  const LiveReading& reading(int slot) const;
  float LiveValues(int slot, int channel) const;

  // The values of a channel from slot `first` on, at most `count` of them; valid until push().
  CurveSamples samples(int channel, int first, int count) const;

  // Readings that were ever dropped: slot s holds the reading dropped() + s since the start.
  std::int64_t dropped() const { return dropped_; }

 private:
  void require(int slot) const;

  SlidingWindow<QString> times_;
  SlidingWindow<LiveReading> values_;
  std::int64_t dropped_ = 0;
};
