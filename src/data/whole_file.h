// Writes files whole or not at all: the one place from which the program puts bytes on a disk.
#pragma once

#include <QFile>
#include <QSaveFile>
#include <QString>

#include <stop_token>
#include <string_view>

// A file that is about to be written. Until write() has succeeded nothing changes at its name.
class WholeFile {
 public:
  // Follows symbolic links. Throws FileError when `path` cannot be written: its folder is missing,
  // it is a folder, it may not be written, or it is a pipe or socket, which could wait for ever.
  explicit WholeFile(const QString& path);

  // Makes `bytes` the contents and returns when they are on the disk. Throws FileError otherwise: a
  // file that was there is as it was, and nothing else is left. An older file is overwritten in
  // place, once the disk has the room, where a new one could not take its place as it is: the
  // folder takes no new file, the owner or group cannot be kept, or the file has other names (hard
  // links). A device takes the bytes as they come.
  // Another thread's `stop` makes it fail as long as a new file has not taken the older one's
  // place. It removes the new one at once, for the program may end before a slow disk is done.
  void write(std::string_view bytes, const std::stop_token& stop = {});

  // After write() has failed: leaves as many of `bytes` as can be written, if no file is there.
  void write_fragment(std::string_view bytes);

 private:
  void replace(std::string_view bytes, const std::stop_token& stop);
  void overwrite(std::string_view bytes);
  void discard_replacement();

  QString path_;
  // Beside the file; takes its place in the end. Not open where the file is overwritten in place.
  QSaveFile replacement_;
};

// The same in one call; errno then says why it failed.
void write_whole_file(const QString& path, std::string_view bytes,
                      const std::stop_token& stop = {});
