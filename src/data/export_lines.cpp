#include "data/export_lines.h"

#include <algorithm>
#include <charconv>

#include "app/recording.h"
#include "base/numbers.h"

namespace {

constexpr qsizetype after_number = 3;
constexpr qsizetype after_time = 8;
constexpr qsizetype before_value = 7;
constexpr qsizetype number_room = 12;

// The line of column heads.
QString head_line(const Recording& recording) {
  QString line = QStringLiteral("Number         Time       ");
  for (int slot = 0; slot < recording.clamped_channel_count(); ++slot) {
    line += QStringLiteral("       ") + column_head(recording, slot);
  }
  return line;
}

}  // namespace

QString channel_line(const Recording& recording, int slot, MinimumLabel label) {
  const auto c = static_cast<std::size_t>(slot);
  const ChannelTexts<const QString> channel = recording.channel(c);
  const auto& stats = recording.ChannelStats;
  return QStringLiteral("Channel No.") + channel.number + QStringLiteral(",Channel Name:") +
         channel.name + QStringLiteral("，Unit:") + channel.unit + QStringLiteral(",Max.:") +
         fixed2(stats[0][c]) +
         (label == MinimumLabel::with_stop ? QStringLiteral(",Min.:") : QStringLiteral(",Min:")) +
         fixed2(stats[1][c]) + QStringLiteral(",Average:") + fixed2(stats[2][c]);
}

QStringList information_lines(const Recording& recording, MinimumLabel label) {
  // Without samples there is neither a first nor a last time.
  const bool samples = recording.SampleCount > 0;
  const QString first = samples ? recording.SampleTimes(0) : QString();
  const QString last = samples ? recording.SampleTimes(recording.SampleCount - 1) : QString();
  QStringList lines = {
      QStringLiteral("Title：") + recording.Title,
      QStringLiteral("Channels:") + whole_with_leading_blank(recording.ChannelCount),
      QStringLiteral("Length:") + whole_with_leading_blank(recording.SampleCount),
      QStringLiteral("Start Time：") + first, QStringLiteral("End Time：") + last};
  for (int slot = 0; slot < recording.clamped_channel_count(); ++slot) {
    lines << channel_line(recording, slot, label);
  }
  return lines;
}

QString column_head(const Recording& recording, int slot) {
  return recording.channel(static_cast<std::size_t>(slot)).heading();
}

QStringList lines_above_samples(const Recording& recording, MinimumLabel label) {
  return information_lines(recording, label) << QString() << head_line(recording);
}

void sample_line(const Recording& recording, int n, QString& line) {
  constexpr char16_t blank = u' ';
  const QString& time = recording.SampleTimes(n);
  const int channels = recording.clamped_channel_count();
  line.resize(number_room + after_number + time.size() + after_time +
              channels * (before_value + fixed2_size));
  auto* const begin = reinterpret_cast<char16_t*>(line.data());
  char number[number_room];
  char16_t* out = begin;
  *out++ = blank;
  out = std::copy(number, std::to_chars(number, number + number_room, n + 1).ptr, out);
  out = std::fill_n(out, after_number, blank);
  out = std::copy_n(reinterpret_cast<const char16_t*>(time.utf16()), time.size(), out);
  out = std::fill_n(out, after_time, blank);
  for (int slot = 0; slot < channels; ++slot) {
    out = write_fixed2(std::fill_n(out, before_value, blank), recording.SampleValues(n, slot));
  }
  line.truncate(out - begin);
}

QString sample_line(const Recording& recording, int n) {
  QString line;
  sample_line(recording, n, line);
  return line;
}
