// The files that commands read and write.
#pragma once

#include <QString>

#include <functional>

#include "app/recording.h"

// The Recording in a data file, with its statistics computed. Throws Failure for a file that is
// missing, cannot be read, or is no data file.
Recording load_recording(const QString& path);

// Has `write` make a file of the name it is given, which ends as `path` does, in a new folder
// beside it, and puts that file in the place of `path` when it is whole and on the disk. Before
// that nothing changes at `path`, whatever happens. Throws Failure when that cannot be done; what
// `write` throws counts as such.
void write_whole(const QString& path, const std::function<void(const QString& name)>& write);

// Throws Failure when no file can be made at `path`, before work is put into one.
void require_writable(const QString& path);
