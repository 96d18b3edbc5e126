// The program's numbered file handles. Each opens one file at a time for reading or writing.
#pragma once

#include <QByteArray>
#include <QFile>

#include <memory>
#include <string_view>

class WholeFile;

// An open handle cannot be opened again. A command that fails and leaves it open therefore makes
// every later command on this handle fail until the program ends. That is intended.
class FileHandle {
 public:
  FileHandle();
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle();

  // Both throw FileError when the handle is already open or `path` cannot be opened, and leave the
  // handle as it was. They refuse a named pipe, whose opening could block for ever.
  void open_for_reading(const QString& path);
  // Changes nothing on the disk; only write() does.
  void open_for_writing(const QString& path);

  bool is_open() const { return read_.isOpen() || written_; }

  // Returns the file's contents, at most its first `most` bytes. Throws FileError when the handle
  // is not open for reading or the file cannot be read.
  QByteArray read(qint64 most);

  // Replaces the file's contents with `bytes` and returns when they are on the disk. Throws
  // FileError when that fails or the handle is not open for writing; the file is then unchanged.
  void write(std::string_view bytes);

  // Used after a failure: if there is no file yet, writes as many of `bytes` as it can. Leaves an
  // older file unchanged.
  void write_fragment(std::string_view bytes);

  // Closes the handle in any case. Throws FileError when the system reports a failure on closing.
  void close();

 private:
  QFile read_;
  std::unique_ptr<WholeFile> written_;
};

// Handle 1 is for data files, handle 2 for the text export.
FileHandle& file_handle_1();
FileHandle& file_handle_2();
