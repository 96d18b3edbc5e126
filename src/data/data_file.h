// The data file: a Recording field by field, as docs/data-file.md describes it.
#pragma once

#include <string_view>

class FieldWriter;
class FileHandle;
class Recording;

// Sets Title, RecorderName, ChannelCount, ChannelInfo rows 0..2, SampleCount and the samples from
// what a data file holds. Throws at the first field that is missing, malformed or too much
// (FileError, ConversionError, BoundsError): what stands before it is in the Recording by then.
void read_recording(std::string_view bytes, Recording& recording);

// The same from the open `file`, whose first 32 MiB are looked at: thirty times what the largest
// Recording takes.
void read_recording(FileHandle& file, Recording& recording);

// Writes the same fields. Throws BoundsError when the counts go beyond what a Recording holds.
void format_recording(const Recording& recording, FieldWriter& out);

// Writes them into the open `file` and returns when they are on the disk. Throws
// FileError when they could not be written, BoundsError when the counts go beyond what a Recording
// holds: an older file is then as it was; where there was none it has what could be written.
void write_recording(const Recording& recording, FileHandle& file);
