// The program's numbered file handles: one file each, opened, written or read, and closed.
#pragma once

#include <QByteArray>
#include <QFile>

#include <string_view>

// A handle that is open cannot be opened again: a command that failed and left it open makes every
// later command on the same handle fail as well, until the program ends. That is intended.
class FileHandle {
 public:
  // Throw FileError when the handle is open already, or when `path` cannot be opened; the handle
  // is then as it was. A file opened for writing is created or emptied. What could make the
  // program wait for ever, such as a named pipe, is refused.
  void open_for_reading(const QString& path);
  void open_for_writing(const QString& path);

  bool is_open() const { return file_.isOpen(); }

  // What the file holds, at most the first `most` bytes. Throws FileError when the handle is
  // closed or the file cannot be read.
  QByteArray read(qint64 most);

  // Throws FileError when the handle is closed or not all of `bytes` could be written.
  void write(std::string_view bytes);

  // Throws FileError when the system reports only now that something was not written. The handle
  // is closed all the same.
  void close();

 private:
  void open(const QString& path, QIODevice::OpenMode mode);

  QFile file_;
};

// Handle 1 serves the data files, handle 2 the text export.
FileHandle& file_handle_1();
FileHandle& file_handle_2();
