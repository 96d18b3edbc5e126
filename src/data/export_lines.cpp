#include "data/export_lines.h"

#include <algorithm>

#include "app/recording.h"
#include "base/numbers.h"

namespace {

constexpr qsizetype after_number = 3;
constexpr qsizetype after_time = 8;
constexpr qsizetype before_value = 7;
constexpr qsizetype number_room = 12;

// The whole number as whole_with_leading_blank writes it; n is above zero.
template <class Character>
Character* append_number(Character* out, int n) {
  *out++ = ' ';
  Character* const first = out;
  for (; n != 0; n /= 10) *out++ = static_cast<Character>('0' + n % 10);
  std::reverse(first, out);
  return out;
}

template <class Character>
Character* append_line(Character* out, const Recording& recording, int n) {
  constexpr auto blank = static_cast<Character>(' ');
  const QString& time = recording.SampleTimes(n);
  out = std::fill_n(append_number(out, n + 1), after_number, blank);
  out = std::transform(time.cbegin(), time.cend(), out,
                       [](QChar c) { return static_cast<Character>(c.unicode()); });
  out = std::fill_n(out, after_time, blank);
  const int channels = recording.held_channels();
  for (int slot = 0; slot < channels; ++slot) {
    out = write_fixed2(std::fill_n(out, before_value, blank), recording.SampleValues(n, slot));
  }
  return out;
}

// The line of column heads.
QString head_line(const Recording& recording) {
  QString line = QStringLiteral("Number         Time       ");
  for (int slot = 0; slot < recording.held_channels(); ++slot) {
    line += QStringLiteral("       ") + column_head(recording, slot);
  }
  return line;
}

}  // namespace

QString channel_line(const Recording& recording, int slot, MinimumLabel label) {
  const auto c = static_cast<std::size_t>(slot);
  const auto& info = recording.ChannelInfo;
  const auto& stats = recording.ChannelStats;
  return QStringLiteral("Channel No.") + info[0][c] + QStringLiteral(",Channel Name:") +
         info[1][c] + QStringLiteral("，Unit:") + info[2][c] + QStringLiteral(",Max.:") +
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
  for (int slot = 0; slot < recording.held_channels(); ++slot) {
    lines << channel_line(recording, slot, label);
  }
  return lines;
}

QString column_head(const Recording& recording, int slot) {
  const auto column = static_cast<std::size_t>(slot);
  return recording.ChannelInfo[1][column] + u'(' + recording.ChannelInfo[2][column] + u')';
}

QStringList lines_above_samples(const Recording& recording, MinimumLabel label) {
  return information_lines(recording, label) << QString() << head_line(recording);
}

qsizetype sample_line_room(const Recording& recording, qsizetype time_size) {
  return number_room + after_number + time_size + after_time +
         recording.held_channels() * (before_value + fixed2_size);
}

QString sample_line(const Recording& recording, int n) {
  QString line(sample_line_room(recording, recording.SampleTimes(n).size()), Qt::Uninitialized);
  auto* const begin = reinterpret_cast<char16_t*>(line.data());
  line.truncate(append_line(begin, recording, n) - begin);
  return line;
}

char* write_plain_sample_line(const Recording& recording, int n, char* out) {
  return append_line(out, recording, n);
}
