#include "base/date_time_form.h"

#include <optional>

namespace {

class FormReader {
 public:
  FormReader(QStringView text, QStringView form, const QLocale& locale)
      : text_(text), form_(form), locale_(locale) {}

  QDateTime read() {
    while (!form_.isEmpty()) {
      if (!read_part()) return {};
    }
    if (!text_.isEmpty()) return {};
    if (afternoon_) hour_ = hour_ % 12 + (*afternoon_ ? 12 : 0);
    const QDate date(year_, month_, day_);
    const QTime time(hour_, minute_, second_);
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
  }

 private:
  // Reads one part of the form: a run of one letter, a quoted text, or a literal character.
  bool read_part() {
    const QChar letter = form_.front();
    if (letter == u'\'') return read_quoted();
    qsizetype run = 0;
    while (run < form_.size() && form_[run] == letter) ++run;
    const bool half_of_day = letter.toLower() == u'a';
    if (half_of_day) run = form_.mid(1).startsWith(u'p', Qt::CaseInsensitive) ? 2 : 1;
    form_ = form_.mid(run);
    if (half_of_day) return read_half_of_day();
    switch (letter.unicode()) {
      case u'd':
        return run > 2 ? read_name(7, &QLocale::dayName, run).has_value() : read_number(day_);
      case u'M':
        return run > 2 ? read_month_name(run) : read_number(month_);
      case u'y':
        return read_year(run);
      case u'h':
      case u'H':
        return read_number(hour_);
      case u'm':
        return read_number(minute_);
      case u's':
        return read_number(second_);
      default:
        return skip(QString(run, letter));
    }
  }

  bool read_quoted() {
    const qsizetype end = form_.indexOf(u'\'', 1);
    if (end < 0) return false;
    const QString quoted = end == 1 ? QStringLiteral("'") : form_.mid(1, end - 1).toString();
    form_ = form_.mid(end + 1);
    return skip(quoted);
  }

  bool skip(QStringView expected) {
    if (expected.isEmpty() || !text_.startsWith(expected, Qt::CaseInsensitive)) return false;
    text_ = text_.mid(expected.size());
    return true;
  }

  bool read_number(int& value, int most_digits = 2) {
    int digits = 0;
    value = 0;
    while (digits < most_digits && digits < text_.size() && text_[digits].isDigit()) {
      value = 10 * value + text_[digits++].digitValue();
    }
    text_ = text_.mid(digits);
    return digits > 0;
  }

  bool read_year(qsizetype letters) {
    if (letters == 4) return read_number(year_, 4);
    constexpr int century = 2000;
    const bool read = letters == 2 && read_number(year_);
    year_ += century;
    return read;
  }

  using Name = QString (QLocale::*)(int, QLocale::FormatType) const;
  // Skips the one of `count` names that comes next in the text, and returns its number from 1.
  std::optional<int> read_name(int count, Name name, qsizetype letters) {
    const auto length = letters == 3 ? QLocale::ShortFormat : QLocale::LongFormat;
    // Backwards, because in some languages the name of month 11 begins with that of month 1.
    for (int i = count; i > 0; --i) {
      if (skip((locale_.*name)(i, length))) return i;
    }
    return std::nullopt;
  }

  bool read_month_name(qsizetype letters) {
    const auto month = read_name(12, &QLocale::monthName, letters);
    month_ = month.value_or(0);
    return month.has_value();
  }

  bool read_half_of_day() {
    afternoon_ = skip(locale_.pmText());
    return *afternoon_ || skip(locale_.amText());
  }

  QStringView text_;
  QStringView form_;
  const QLocale& locale_;
  int year_ = 0, month_ = 0, day_ = 0;
  int hour_ = 0, minute_ = 0, second_ = 0;
  std::optional<bool> afternoon_;
};

}  // namespace

QDateTime read_date_time(const QString& text, const QString& form, const QLocale& locale) {
  return FormReader(text, form, locale).read();
}
