// The program's numbered file handles: one file each, opened, written or read, and closed.
#pragma once

#include <QByteArray>
#include <QFile>

#include <memory>
#include <string_view>

class WholeFile;

// A handle that is open cannot be opened again: a command that failed and left it open makes every
// later command on the same handle fail as well, until the program ends. That is intended.
class FileHandle {
 public:
  FileHandle();
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle();

  // Throw FileError when the handle is open already, or when `path` cannot be opened; the handle
  // is then as it was. What could make the program wait for ever, such as a named pipe, is refused.
  void open_for_reading(const QString& path);
  // The file itself changes only with write().
  void open_for_writing(const QString& path);

  bool is_open() const { return read_.isOpen() || written_; }

  // What the file holds, at most the first `most` bytes. Throws FileError when the handle is not
  // open for reading or the file cannot be read.
  QByteArray read(qint64 most);

  // Makes `bytes` the contents of the file, whole and on the disk. Throws FileError when that
  // cannot be done or the handle is not open for writing; the file is then as it was.
  void write(std::string_view bytes);

  // After a failure, in place of write(): leaves what can be written if no file is there yet. An
  // older file stays as it is.
  void write_fragment(std::string_view bytes);

  // Throws FileError when the system reports a failure only now. The handle is closed all the same.
  void close();

 private:
  QFile read_;
  std::unique_ptr<WholeFile> written_;
};

// Handle 1 serves the data files, handle 2 the text export.
FileHandle& file_handle_1();
FileHandle& file_handle_2();
