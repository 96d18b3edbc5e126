// Reads a date and time in the form in which QLocale writes it. In some locales Qt 6.4's own parser
// reads past the end of the text, so it must not see texts from files.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

// The date and time of a text in a form of QLocale's letters (d M y, h H m s, AP, names of months
// and days, texts in quotes), as a wall time without a zone. A year of two digits is in 2000..2099.
// An invalid QDateTime for any other text.
QDateTime read_date_time(const QString& text, const QString& form, const QLocale& locale);
