// Writes files completely or not at all: data files, automatic saves, exports and PDF files.
#pragma once

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <stop_token>
#include <string_view>

// A file to be written. Only write() and write_fragment() change what is at its path.
class WholeFile {
 public:
  // Follows symbolic links. Throws FileError when `path` cannot be written: its folder is missing,
  // it is a folder, permission is denied, or it is a pipe or socket, which could block for ever.
  explicit WholeFile(const QString& path);

  // Makes `bytes` the contents and returns when they are on the disk. Throws FileError otherwise:
  // an older file is then unchanged, and nothing else is left. An older file is overwritten in
  // place, after the disk space is reserved, where a new file cannot take its place: the folder
  // accepts no new file, the owner or group cannot be kept, or the file has other names (hard
  // links). A device simply receives the bytes.
  // Another thread's `stop` makes it fail until the new file has taken the older one's place. It
  // removes the new file's name at once, because the program may end before a slow disk is done.
  void write(std::string_view bytes, const std::stop_token& stop = {});

  // Used after write() has failed: if no file exists, writes as many of `bytes` as it can.
  void write_fragment(std::string_view bytes);

 private:
  void replace(std::string_view bytes, const std::stop_token& stop);
  void overwrite(std::string_view bytes);
  void discard_replacement();

  QString path_;
  // The new file in the same folder. Not open when the older file is overwritten in place.
  QSaveFile replacement_;
};

// Does the same in one call. After a failure of the system errno holds the reason.
void write_whole_file(const QString& path, std::string_view bytes,
                      const std::stop_token& stop = {});
