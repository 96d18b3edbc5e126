#include "views/statistics.h"

#include <span>

#include "app/recording.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/times.h"

void compute_statistics(Recording& recording) {
  auto& stats = recording.ChannelStats;
  auto& [maximum, minimum, average, unused] = stats;
  for (std::size_t c = 0; c < Recording::max_channels; ++c) {
    maximum[c] = minimum[c] = average[c] = recording.SampleValues(0, static_cast<int>(c));
  }
  const auto channels = static_cast<std::size_t>(recording.clamped_channel_count());
  const double count = recording.SampleCount;
  for (std::size_t c = 0; c < channels; ++c) average[c] /= count;

  const std::span<const float> values = recording.all_values();
  const auto held = static_cast<std::size_t>(recording.clamped_sample_count());
  for (std::size_t n = 1; n < held; ++n) {
    for (std::size_t c = 0; c < channels; ++c) {
      const float x = values[n * Recording::channel_slots + c];
      if (static_cast<float>(maximum[c]) < x) maximum[c] = x;
      if (static_cast<float>(minimum[c]) > x) minimum[c] = x;
      average[c] = x / count + average[c];
    }
  }
}

QString interval_text(const QString& first, const QString& second) {
  const QDateTime from = date_time_of(first);
  const QDateTime to = date_time_of(second);
  if (!from.isValid() || !to.isValid()) throw ConversionError("not a time stamp");
  const QDateTime shown = wall_time({1999, 1, 1, 0, 0, 0}).addSecs(from.secsTo(to));
  return stamp_text(shown).mid(11).replace(u':', u'-');
}

std::vector<InformationRow> information_rows(const Recording& recording) {
  std::vector<InformationRow> rows;
  const auto add = [&rows](const QString& label, const auto& value) {
    rows.push_back({label, {}});
    skip_on_error([&] { rows.back().value = value(); });
  };
  add(QStringLiteral("Title"), [&] { return recording.Title; });
  add(QStringLiteral("Recorder Name"), [&] { return recording.RecorderName; });
  add(QStringLiteral("Channels"), [&] { return QString::number(recording.ChannelCount); });
  add(QStringLiteral("Length"), [&] { return QString::number(recording.SampleCount); });
  add(QStringLiteral("Start Time"), [&] { return recording.SampleTimes(0); });
  add(QStringLiteral("End Time"),
      [&] { return recording.SampleTimes(std::int64_t{recording.SampleCount} - 1); });
  add(QStringLiteral("Interval Time"),
      [&] { return interval_text(recording.SampleTimes(0), recording.SampleTimes(1)); });
  const auto& [maximum, minimum, average, unused] = recording.ChannelStats;
  for (std::size_t c = 0; c < static_cast<std::size_t>(recording.clamped_channel_count()); ++c) {
    const ChannelTexts<const QString> channel = recording.channel(c);
    add(QStringLiteral("Channel No."), [&] { return channel.number; });
    add(QStringLiteral("Channel Name"), [&] { return channel.name; });
    add(QStringLiteral("Unit"), [&] { return channel.unit; });
    add(QStringLiteral("Max."), [x = maximum[c]] { return fixed2(x); });
    add(QStringLiteral("Min."), [x = minimum[c]] { return fixed2(x); });
    add(QStringLiteral("Average"), [x = average[c]] { return fixed2(x); });
  }
  return rows;
}
