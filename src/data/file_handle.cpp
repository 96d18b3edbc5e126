#include "data/file_handle.h"

#include <QFileInfo>

#include <algorithm>

#include "base/errors.h"
#include "data/whole_file.h"

FileHandle::FileHandle() = default;
FileHandle::~FileHandle() = default;

void FileHandle::open_for_reading(const QString& path) {
  if (is_open()) throw FileError("file already open");
  if (!QFileInfo(path).isFile()) throw FileError("no such file");
  read_.setFileName(path);
  if (!read_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
    throw FileError("file cannot be opened");
  }
}

void FileHandle::open_for_writing(const QString& path) {
  if (is_open()) throw FileError("file already open");
  written_ = std::make_unique<WholeFile>(path);
}

QByteArray FileHandle::read(qint64 most) {
  QByteArray bytes(static_cast<qsizetype>(std::clamp<qint64>(read_.size(), 0, most)),
                   Qt::Uninitialized);
  const qint64 length = read_.isOpen() ? read_.read(bytes.data(), bytes.size()) : -1;
  if (length < 0) throw FileError("file cannot be read");
  bytes.truncate(static_cast<qsizetype>(length));
  return bytes;
}

void FileHandle::write(std::string_view bytes) {
  if (!written_) throw FileError("file not open for writing");
  written_->write(bytes);
}

void FileHandle::write_fragment(std::string_view bytes) {
  if (written_) written_->write_fragment(bytes);
}

void FileHandle::close() {
  written_.reset();
  read_.close();
  if (read_.error() != QFileDevice::NoError) throw FileError("file cannot be closed");
}

FileHandle& file_handle_1() {
  static FileHandle handle;
  return handle;
}

FileHandle& file_handle_2() {
  static FileHandle handle;
  return handle;
}
