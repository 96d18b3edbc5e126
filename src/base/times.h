// Dates and times as the program keeps and shows them. They carry no time zone: a QDateTime here
// is UTC-based and holds the local wall time, so a summer-time change moves nothing.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// "YYYY-MM-DD HH:MM:SS", the form in which the Recording keeps its time stamps.
QString stamp_text(const QDateTime& time);

// The date and time of a stamp in that form; an invalid QDateTime for any other text.
QDateTime stamp_time(const QString& text);

// The system's general date-time text: the locale's short date and a time to the second; the stamp
// where a text in the locale's form cannot be read back.
QString general_date_time_text(const QDateTime& time, const QLocale& locale = QLocale::system());

// The date and time of a text in one of the two forms above; a year of two digits is in 2000..2099.
// An invalid QDateTime for any other text.
QDateTime date_time_of(const QString& text, const QLocale& locale = QLocale::system());
// Turns such a text into a stamp, so that texts can be compared; returns any other text unchanged.
QString as_stamp(const QString& text);

struct DateAndTime {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

// Wall time without a zone from its parts; out-of-range parts carry over (month 13 is January of
// the next year, day 0 the last day of the month before).
QDateTime wall_time(const DateAndTime& at);
