// The files that commands read and write.
#pragma once

#include <QString>

#include <functional>

#include "app/recording.h"

// Reads a data file without computing statistics. Throws Failure for a file that is missing, cannot
// be read, or is not a data file.
Recording load_recording(const QString& path);

// Throws Failure when no file can be written at `path`. Called before any work is done.
void require_writable(const QString& path);

// Runs `write`, which writes the file `path` completely or leaves it unchanged. If `write` throws a
// RunTimeError, throws Failure with the system's reason, or else with that of the error.
void write_file(const QString& path, const std::function<void()>& write);
