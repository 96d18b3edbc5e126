#include "cli/files.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

#include "base/errors.h"
#include "cli/command.h"
#include "data/data_file.h"
#include "data/file_handle.h"

namespace {

[[noreturn]] void fail(const QString& path, const QString& what) {
  throw Failure(exit_status::file, QStringLiteral("%1 %2").arg(path, what));
}

[[noreturn]] void fail_to_write(const QString& path, const QString& why) {
  fail(path, QStringLiteral("cannot be written: ") + why);
}

}  // namespace

Recording load_recording(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) fail(path, QStringLiteral("does not exist"));
  if (!info.isFile()) fail(path, QStringLiteral("is not a file"));
  if (!info.isReadable()) fail(path, QStringLiteral("cannot be read: permission denied"));
  Recording recording;
  try {
    FileHandle file;
    file.open_for_reading(path);
    read_recording(file, recording);
    if (recording.SampleCount < 0 || recording.ChannelCount < 0) throw FileError("negative count");
  } catch (const RunTimeError& error) {
    fail(path, QStringLiteral("is not a data file, or it is damaged: ") +
                   QString::fromLocal8Bit(error.what()));
  }
  recording.ViewCount = recording.SampleCount;
  return recording;
}

void require_writable(const QString& path) {
  const QFileInfo info(path);
  if (info.isDir()) fail_to_write(path, QStringLiteral("it is a folder"));
  if (info.exists() && !info.isFile()) fail_to_write(path, QStringLiteral("it is not a file"));
  QSaveFile file(path);
  // An existing file can be overwritten even if its folder accepts no new file.
  if (!file.open(QIODevice::WriteOnly) && !info.isWritable()) {
    fail_to_write(path, file.errorString());
  }
}

void write_file(const QString& path, const std::function<void()>& write) {
  errno = 0;
  try {
    write();
  } catch (const FileError& error) {
    fail_to_write(path, errno == 0 ? QString::fromLocal8Bit(error.what()) : qt_error_string());
  } catch (const RunTimeError& error) {
    fail_to_write(path, QString::fromLocal8Bit(error.what()));
  }
}
