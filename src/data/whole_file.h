// Writes files whole or not at all: the one place from which the program puts bytes on a disk.
#pragma once

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <string_view>

// A file that is about to be written. Until write() has succeeded nothing changes at its name.
class WholeFile {
 public:
  // Follows symbolic links. Throws FileError when `path` cannot be written: its folder is missing,
  // it is a folder, it may not be written, or it is a pipe or socket, which could wait for ever.
  explicit WholeFile(const QString& path);

  // Makes `bytes` the contents and returns when they are on the disk. Throws FileError otherwise: a
  // file that was there is as it was, with its permissions, and nothing else is left. Where the
  // folder takes no new file, an older one is overwritten in place once the disk has the room.
  // A device takes the bytes as they come.
  void write(std::string_view bytes);

  // After write() has failed: leaves as many of `bytes` as can be written, if no file is there.
  void write_fragment(std::string_view bytes) const;

 private:
  void replace(std::string_view bytes);
  void overwrite(std::string_view bytes);

  QString path_;
  // Beside the file; takes its place in the end. Not open where the file is overwritten in place.
  QSaveFile replacement_;
};

// The same in one call.
void write_whole_file(const QString& path, std::string_view bytes);
