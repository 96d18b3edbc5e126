// The Recording: the one set of historical samples that the program holds. The download or an
// opened data file fills it; the views, the exports and the printouts read it.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

// References to the Recording's texts of one channel; `Text` is QString or const QString.
template <class Text>
struct ChannelTexts {
  Text& number;  // the recorder's channel number, "1".."4"
  Text& name;
  Text& unit;

  // "name(unit)": heads a column of values.
  QString heading() const { return name + u'(' + unit + u')'; }
  // "name unit": labels a scale and the legend.
  QString name_and_unit() const { return name + u' ' + unit; }
};

class Recording {
 public:
  static constexpr int max_samples = 30001;
  static constexpr int max_channels = 4;
  // One slot more than there are channels; the last is part of the layout and never read.
  static constexpr int channel_slots = 5;

  Recording();

  // Setting SampleCount to 0 empties the Recording; the rest keeps its old contents, which nothing
  // then reads. A failed open can leave a count larger than the arrays, so loops over samples use
  // the checked access below or clamped_sample_count().
  QString Title;
  QString RecorderName;
  std::int16_t ChannelCount = 0;
  std::int32_t SampleCount = 0;
  // The number of samples in view, for all historical views.
  std::int32_t ViewCount = 0;

  // [row][slot]: row 0 is the recorder's channel number "1".."4", 1 name, 2 unit, 3 unused.
  std::array<std::array<QString, channel_slots>, 4> ChannelInfo;
  // The texts of slot 0..4. Throws BoundsError for any other slot.
  ChannelTexts<QString> channel(std::size_t slot) {
    checked(static_cast<std::int64_t>(slot), channel_slots);
    return {ChannelInfo[0][slot], ChannelInfo[1][slot], ChannelInfo[2][slot]};
  }
  ChannelTexts<const QString> channel(std::size_t slot) const {
    checked(static_cast<std::int64_t>(slot), channel_slots);
    return {ChannelInfo[0][slot], ChannelInfo[1][slot], ChannelInfo[2][slot]};
  }

  // [row][slot]: row 0 is the maximum, 1 minimum, 2 average, 3 unused; in the channel's unit.
  std::array<std::array<double, channel_slots>, 4> ChannelStats{};

  // The time stamp of a sample, "YYYY-MM-DD HH:MM:SS". Throws BoundsError outside 0..30000.
  QString& SampleTimes(std::int64_t sample) { return times_[checked(sample, max_samples)]; }
  const QString& SampleTimes(std::int64_t sample) const {
    return times_[checked(sample, max_samples)];
  }

  // The value of a sample in a channel slot, in the channel's unit. Throws BoundsError for a sample
  // outside 0..30000 or a slot outside 0..4.
  float& SampleValues(std::int64_t sample, std::int64_t slot) {
    return values_[checked(sample, max_samples) * channel_slots + checked(slot, channel_slots)];
  }
  float SampleValues(std::int64_t sample, std::int64_t slot) const {
    return values_[checked(sample, max_samples) * channel_slots + checked(slot, channel_slots)];
  }

  // Throws BoundsError unless the arrays hold all `count` samples from `first` on; `count` must be
  // at least 1.
  void require_samples(std::int64_t first, std::int64_t count) const {
    checked(first, max_samples);
    checked(first + count - 1, max_samples);
  }

  // All values, sample after sample, `channel_slots` for each: for loops over many samples.
  std::span<const float> all_values() const { return values_; }

  // SampleCount clamped to the size of the arrays, 0..30001.
  int clamped_sample_count() const;
  // ChannelCount clamped to 0..4.
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
