// Reads and writes the data file: a Recording field by field (docs/data-file.md).
#pragma once

#include <string_view>

class FieldWriter;
class FileHandle;
class Recording;

// Sets Title, RecorderName, ChannelCount, ChannelInfo rows 0..2, SampleCount and the samples from
// the bytes of a data file. Throws FileError, ConversionError or BoundsError at the first field
// that is missing, malformed or one too many; the Recording then holds the fields before it.
void read_recording(std::string_view bytes, Recording& recording);

// Does the same with the first 32 MiB of the open `file`. A full Recording takes about 2 MiB.
void read_recording(FileHandle& file, Recording& recording);

// Writes the same fields. Throws BoundsError when a count exceeds what a Recording can hold.
void format_recording(const Recording& recording, FieldWriter& out);

// Writes the fields to the open `file` and returns when they are on the disk. Throws FileError when
// they cannot be written, and BoundsError as above. After a failure an older file is unchanged; if
// there was none, the new file holds as many bytes as could be written.
void write_recording(const Recording& recording, FileHandle& file);
