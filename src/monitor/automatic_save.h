// The automatic save of the live buffer: a data file that Open reads back, its fields in records
// of one line each (docs/data-file.md).
#pragma once

#include <QDateTime>
#include <QString>

#include "monitor/live_channels.h"

class LiveBuffer;

// The number of readings from one save to the next.
inline constexpr int readings_per_save = 15000;

// "YYYY-MM-DD HH-MM-SS.qlx"
QString automatic_save_name(const QDateTime& now);

struct AutomaticSaveHeader {
  QString title;
  QString recorder_name;
  LiveChannels channels;
};

// Writes the whole buffer, replaces a file of that name and returns when the bytes are on the disk.
// If it cannot, throws FileError and leaves any older file as it was.
void save_live_buffer(const QString& path, const AutomaticSaveHeader& header,
                      const LiveBuffer& buffer);
