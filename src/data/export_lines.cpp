#include "data/export_lines.h"

#include <algorithm>
#include <string_view>

#include "app/numbers.h"
#include "app/recording.h"

namespace {

constexpr std::u16string_view after_number = u"   ";
constexpr std::u16string_view after_time = u"        ";
constexpr std::u16string_view before_value = u"       ";
constexpr qsizetype number_size = 12;

char16_t* append(char16_t* out, std::u16string_view text) {
  return std::copy(text.cbegin(), text.cend(), out);
}

// The whole number as whole_with_leading_blank writes it; n is above zero.
char16_t* append_number(char16_t* out, int n) {
  *out++ = u' ';
  char16_t* const first = out;
  for (; n != 0; n /= 10) *out++ = static_cast<char16_t>(u'0' + n % 10);
  std::reverse(first, out);
  return out;
}

QString channel_line(const Recording& recording, std::size_t slot, MinimumLabel label) {
  const auto& info = recording.ChannelInfo;
  const auto& stats = recording.ChannelStats;
  return QStringLiteral("Channel No.") + info[0][slot] + QStringLiteral(",Channel Name:") +
         info[1][slot] + QStringLiteral("，Unit:") + info[2][slot] + QStringLiteral(",Max.:") +
         fixed2(stats[0][slot]) +
         (label == MinimumLabel::with_stop ? QStringLiteral(",Min.:") : QStringLiteral(",Min:")) +
         fixed2(stats[1][slot]) + QStringLiteral(",Average:") + fixed2(stats[2][slot]);
}

}  // namespace

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
    lines << channel_line(recording, static_cast<std::size_t>(slot), label);
  }
  return lines;
}

QString column_head(const Recording& recording, int slot) {
  const auto column = static_cast<std::size_t>(slot);
  return recording.ChannelInfo[1][column] + u'(' + recording.ChannelInfo[2][column] + u')';
}

QString head_line(const Recording& recording) {
  QString line = QStringLiteral("Number         Time       ");
  for (int slot = 0; slot < recording.held_channels(); ++slot) {
    line += QStringLiteral("       ") + column_head(recording, slot);
  }
  return line;
}

QStringList lines_above_samples(const Recording& recording, MinimumLabel label) {
  return information_lines(recording, label) << QString() << head_line(recording);
}

QStringView SampleLines::line(int n) {
  const QString& time = recording_.SampleTimes(n);
  const int channels = recording_.held_channels();
  const qsizetype most = number_size + static_cast<qsizetype>(after_number.size()) + time.size() +
                         static_cast<qsizetype>(after_time.size()) +
                         channels * (static_cast<qsizetype>(before_value.size()) + fixed2_size);
  if (buffer_.size() < most) buffer_.resize(most);
  auto* const start = reinterpret_cast<char16_t*>(buffer_.data());
  char16_t* out = append(append_number(start, n + 1), after_number);
  out = append(std::copy_n(time.utf16(), time.size(), out), after_time);
  for (int slot = 0; slot < channels; ++slot) {
    out = write_fixed2(append(out, before_value), recording_.SampleValues(n, slot));
  }
  return {start, out};
}
