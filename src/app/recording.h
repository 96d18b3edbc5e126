// The Recording: the one set of historical samples that the program holds, filled by the download
// or by opening a data file, read by the views, the exports and the printouts.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

// What the Recording says of one channel; `Text` is QString or const QString.
template <class Text>
struct ChannelTexts {
  Text& number;  // of the recorder's channel, "1".."4"
  Text& name;
  Text& unit;

  // "name(unit)": the heading of a column of values.
  QString heading() const { return name + u'(' + unit + u')'; }
  // "name unit": the title of a scale, and the legend.
  QString name_and_unit() const { return name + u' ' + unit; }
};

class Recording {
 public:
  static constexpr int max_samples = 30001;
  static constexpr int max_channels = 4;
  // One slot more than there are channels: it is part of the layout and never read.
  static constexpr int channel_slots = 5;

  Recording();

  // Emptied by setting SampleCount to 0; everything else keeps its old contents, which are then
  // simply not read. A failed open can leave a count that the arrays do not hold, so loops over
  // samples go through the checked access below or through clamped_sample_count().
  QString Title;
  QString RecorderName;
  std::int16_t ChannelCount = 0;
  std::int32_t SampleCount = 0;
  // The number of samples that the historical views show as their current span.
  std::int32_t ViewCount = 0;

  // [row][slot]: row 0 the recorder's channel number as text "1".."4", 1 name, 2 unit, 3 unused.
  std::array<std::array<QString, channel_slots>, 4> ChannelInfo;
  // The rows of one slot 0..4. Throw BoundsError outside.
  ChannelTexts<QString> channel(std::size_t slot) {
    checked(static_cast<std::int64_t>(slot), channel_slots);
    return {ChannelInfo[0][slot], ChannelInfo[1][slot], ChannelInfo[2][slot]};
  }
  ChannelTexts<const QString> channel(std::size_t slot) const {
    checked(static_cast<std::int64_t>(slot), channel_slots);
    return {ChannelInfo[0][slot], ChannelInfo[1][slot], ChannelInfo[2][slot]};
  }

  // [row][slot]: row 0 maximum, 1 minimum, 2 average, 3 unused; in the channel's unit.
  std::array<std::array<double, channel_slots>, 4> ChannelStats{};

  // Time stamp of sample n, "YYYY-MM-DD HH:MM:SS". Throws BoundsError outside 0..30000.
  QString& SampleTimes(std::int64_t sample) { return times_[checked(sample, max_samples)]; }
  const QString& SampleTimes(std::int64_t sample) const {
    return times_[checked(sample, max_samples)];
  }

  // Value of sample n on channel slot c in the channel's unit. Throws BoundsError outside
  // 0..30000 and 0..4.
  float& SampleValues(std::int64_t sample, std::int64_t slot) {
    return values_[checked(sample, max_samples) * channel_slots + checked(slot, channel_slots)];
  }
  float SampleValues(std::int64_t sample, std::int64_t slot) const {
    return values_[checked(sample, max_samples) * channel_slots + checked(slot, channel_slots)];
  }

  // Throws BoundsError unless the arrays hold all of the `count` samples from `first` on, at least
  // one.
  void require_samples(std::int64_t first, std::int64_t count) const {
    checked(first, max_samples);
    checked(first + count - 1, max_samples);
  }

  // All values, sample after sample, `channel_slots` a sample: for loops over many samples.
  std::span<const float> all_values() const { return values_; }

  // SampleCount held within what the arrays hold, 0..30001.
  int clamped_sample_count() const;
  // ChannelCount held within 0..4.
  int clamped_channel_count() const;

 private:
  static std::size_t checked(std::int64_t index, int bound) {
    if (index < 0 || index >= bound) throw_out_of_bounds();
    return static_cast<std::size_t>(index);
  }
  [[noreturn]] static void throw_out_of_bounds();

  std::vector<QString> times_;
  std::vector<float> values_;
};
