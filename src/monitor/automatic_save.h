// The automatic save of the live buffer: a data file that Open reads back, its fields in records
// of one line each (docs/data-file.md).
#pragma once

#include <QDateTime>
#include <QString>

#include "monitor/live_channels.h"

class LiveBuffer;

// Readings between two saves.
inline constexpr int readings_per_save = 15000;

// "YYYY-MM-DD HH-MM-SS.qlx"
QString automatic_save_name(const QDateTime& now);

struct AutomaticSaveHeader {
  QString title;
  QString recorder_name;
  LiveChannels channels;
};

// Writes the whole buffer and returns when it is on the disk; a file of that name is replaced.
// Throws FileError when it cannot be written; nothing has changed then.
void save_live_buffer(const QString& path, const AutomaticSaveHeader& header,
                      const LiveBuffer& buffer);
