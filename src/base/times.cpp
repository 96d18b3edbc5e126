#include "base/times.h"

#include <QLocale>
#include <QRegularExpression>

#include <cstdio>

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
  // Taken apart, since the local time zone has hours that it leaves out.
  const QDate date = QDate::fromString(text.left(10), Qt::ISODate);
  const QTime clock = QTime::fromString(text.mid(11), Qt::ISODate);
  if (!date.isValid() || !clock.isValid()) return {};
  // Qt takes other separators too.
  const QDateTime time(date, clock, Qt::UTC);
  return stamp_text(time) == text ? time : QDateTime();
}

QString general_date_time_text(const QDateTime& time) {
  const QLocale locale = QLocale::system();
  // The long time form carries the seconds, and a time-zone name that a wall time does not have.
  static const QRegularExpression zone(QStringLiteral("\\s*,?\\s*[\\(\\[]?t+[\\)\\]]?\\s*"));
  const QString time_form = locale.timeFormat(QLocale::LongFormat).remove(zone);
  return locale.toString(time.date(), QLocale::ShortFormat) + u' ' +
         locale.toString(time.time(), time_form);
}

QDateTime wall_time(int year, int month, int day, int hour, int minute, int second) {
  const int months = year * 12 + month - 1;
  const QDate date = QDate(months / 12, months % 12 + 1, 1).addDays(day - 1);
  return QDateTime(date, QTime(0, 0), Qt::UTC).addSecs((hour * 60 + minute) * 60 + second);
}
