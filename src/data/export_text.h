// Exports the Recording as a plain text file.
#pragma once

class FileHandle;
class Recording;

// Writes the Recording to the open `file`, each line as one text field of the data file: in double
// quotes, ended by CR LF (docs/export.md). Throws FileError when the file cannot be written, and
// BoundsError when the sample count exceeds what a Recording can hold; the file is then unchanged.
void write_text_export(const Recording& recording, FileHandle& file);
