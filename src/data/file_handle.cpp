#include "data/file_handle.h"

#include <QFileInfo>

#include <algorithm>
#include <filesystem>

#include "base/errors.h"

namespace {

bool is_pipe_or_socket(const QString& path) {
  std::error_code ignored;
  const auto status =
      std::filesystem::status(QFileInfo(path).filesystemAbsoluteFilePath(), ignored);
  return std::filesystem::is_fifo(status) || std::filesystem::is_socket(status);
}

}  // namespace

void FileHandle::open(const QString& path, QIODevice::OpenMode mode) {
  if (is_open()) throw FileError("file already open");
  file_.setFileName(path);
  // Without a buffer of its own, so that a full disk shows at the write.
  if (!file_.open(mode | QIODevice::Unbuffered)) throw FileError("file cannot be opened");
}

void FileHandle::open_for_reading(const QString& path) {
  if (!is_open() && !QFileInfo(path).isFile()) throw FileError("no such file");
  open(path, QIODevice::ReadOnly);
}

void FileHandle::open_for_writing(const QString& path) {
  if (!is_open() && is_pipe_or_socket(path)) throw FileError("not a file");
  open(path, QIODevice::WriteOnly | QIODevice::Truncate);
}

QByteArray FileHandle::read(qint64 most) {
  QByteArray bytes(static_cast<qsizetype>(std::clamp<qint64>(file_.size(), 0, most)),
                   Qt::Uninitialized);
  const qint64 length = is_open() ? file_.read(bytes.data(), bytes.size()) : -1;
  if (length < 0) throw FileError("file cannot be read");
  bytes.truncate(static_cast<qsizetype>(length));
  return bytes;
}

void FileHandle::write(std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  if (!is_open() || file_.write(bytes.data(), size) != size) {
    throw FileError("file cannot be written");
  }
}

void FileHandle::close() {
  file_.close();
  if (file_.error() != QFileDevice::NoError) throw FileError("file cannot be closed");
}

FileHandle& file_handle_1() {
  static FileHandle handle;
  return handle;
}

FileHandle& file_handle_2() {
  static FileHandle handle;
  return handle;
}
