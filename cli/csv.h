// Comma-separated values as RFC 4180 has them, in UTF-8, with ISO 8601 times.
#pragma once

#include <QString>
#include <QStringList>

class Recording;

// One record with its line end; fields are quoted where they must be.
QString csv_record(const QStringList& fields);

// "2026-03-01T10:00:00" of a time stamp or a general date-time text; another text as it is.
QString iso_time(const QString& stamp);

// The shortest form of a reading that reads back as the same 32-bit number.
QString csv_number(float value);

// A head and a record a sample.
QString csv_of(const Recording& recording);
