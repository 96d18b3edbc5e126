// The export as a plain text file.
#pragma once

class FileHandle;
class Recording;

// Writes the Recording into the open `file`: each line as one text field of the data file, in
// double quotes, ended by CR LF (docs/export.md). Throws FileError when it could not be written,
// BoundsError when the count goes beyond what a Recording holds; nothing is then in the file.
void write_text_export(const Recording& recording, FileHandle& file);
