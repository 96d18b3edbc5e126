#include "base/times.h"

#include <QRegularExpression>

#include <cstdio>

#include "base/date_time_form.h"

QString stamp_text(const QDateTime& time) {
  const QDate date = time.date();
  const QTime clock = time.time();
  char text[40];
  const int length =
      std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year(), date.month(),
                    date.day(), clock.hour(), clock.minute(), clock.second());
  return QString::fromLatin1(text, length);
}

QDateTime stamp_time(const QString& text) {
  // Parsed in two parts: as one local date-time, an hour that the time zone skips would be invalid.
  const QDate date = QDate::fromString(text.left(10), Qt::ISODate);
  const QTime clock = QTime::fromString(text.mid(11), Qt::ISODate);
  if (!date.isValid() || !clock.isValid()) return {};
  // Qt accepts other separators too, which a stamp does not have.
  const QDateTime time(date, clock, Qt::UTC);
  return stamp_text(time) == text ? time : QDateTime();
}

namespace {

// The long time form has the seconds, but also a time-zone name, which a wall time does not have.
// Qt does not know "B", a part of the day in words, and would write the letter.
QString general_form(const QLocale& locale) {
  static const QRegularExpression left_out(QStringLiteral("\\s*,?\\s*[\\(\\[]?t+[\\)\\]]?\\s*|B"));
  return locale.dateFormat(QLocale::ShortFormat) + u' ' +
         locale.timeFormat(QLocale::LongFormat).remove(left_out);
}

}  // namespace

QString general_date_time_text(const QDateTime& time, const QLocale& locale) {
  const QString form = general_form(locale);
  const QString text = locale.toString(time, form);
  const QString stamp = stamp_text(time);
  return stamp_text(read_date_time(text, form, locale)) == stamp ? text : stamp;
}

QDateTime date_time_of(const QString& text, const QLocale& locale) {
  const QDateTime time = stamp_time(text);
  return time.isValid() ? time : read_date_time(text, general_form(locale), locale);
}

QString as_stamp(const QString& text) {
  const QDateTime time = date_time_of(text);
  return time.isValid() ? stamp_text(time) : text;
}

QDateTime wall_time(const DateAndTime& at) {
  const int months = at.year * 12 + at.month - 1;
  const QDate date = QDate(months / 12, months % 12 + 1, 1).addDays(at.day - 1);
  return QDateTime(date, QTime(0, 0), Qt::UTC).addSecs((at.hour * 60 + at.minute) * 60 + at.second);
}
