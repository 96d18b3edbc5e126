// The files that commands read and write.
#pragma once

#include <QString>

#include <functional>

#include "app/recording.h"

// The Recording in a data file; its statistics are not computed. Throws Failure for a file that is
// missing, cannot be read, or is no data file.
Recording load_recording(const QString& path);

// Throws Failure when no file can be written at `path`, before work is put into one.
void require_writable(const QString& path);

// Runs `write`, which writes the file `path` whole or leaves it as it was. Throws Failure with the
// system's reason, or that of the RunTimeError that `write` throws.
void write_file(const QString& path, const std::function<void()>& write);
