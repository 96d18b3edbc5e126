// Comma-separated values (RFC 4180, UTF-8) with ISO 8601 times.
#pragma once

#include <QString>
#include <QStringList>

class Recording;

// One record with its line end. Quotes only the fields that need it.
QString csv_record(const QStringList& fields);

// "2026-03-01T10:00:00" for a time stamp or a general date-time text; other texts are unchanged.
QString iso_time(const QString& stamp);

// The shortest decimal form of a reading that reads back as the same 32-bit float.
QString csv_number(float value);

// A header record and one record per sample.
QString csv_of(const Recording& recording);
