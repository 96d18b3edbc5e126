#include "cli/files.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "base/errors.h"
#include "cli/command.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "views/statistics.h"

namespace {

[[noreturn]] void fail(const QString& path, const QString& what) {
  throw Failure(exit_status::file, QStringLiteral("%1 %2").arg(path, what));
}

[[noreturn]] void fail_to_write(const QString& path, const QString& why) {
  fail(path, QStringLiteral("cannot be written: ") + why);
}

QString last_error() {
  return QString::fromLocal8Bit(std::strerror(errno));
}

bool sync(const QString& path, int flags) {
  const int handle = open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
  if (handle < 0) return false;
  const bool done = fsync(handle) == 0;
  close(handle);
  return done;
}

// The file that a symbolic link leads to.
QString target_of(const QString& path) {
  const QFileInfo info(path);
  if (info.isSymLink() && info.exists()) return info.canonicalFilePath();
  if (info.isDir()) fail_to_write(path, QStringLiteral("it is a folder"));
  if (info.exists() && !info.isFile()) fail_to_write(path, QStringLiteral("it is not a file"));
  return info.absoluteFilePath();
}

}  // namespace

Recording load_recording(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) fail(path, QStringLiteral("does not exist"));
  if (!info.isFile()) fail(path, QStringLiteral("is not a file"));
  if (!info.isReadable()) fail(path, QStringLiteral("cannot be read: permission denied"));
  Recording recording;
  or_error_path(
      [&] {
        FileHandle file;
        file.open_for_reading(path);
        read_recording(file, recording);
      },
      [&] { fail(path, QStringLiteral("is not a data file, or it is damaged")); });
  if (recording.SampleCount < 0 || recording.ChannelCount < 0) {
    fail(path, QStringLiteral("is not a data file, or it is damaged"));
  }
  recording.ViewCount = recording.SampleCount;
  if (recording.SampleCount > 0) compute_statistics(recording);
  return recording;
}

void require_writable(const QString& path) {
  const QFileInfo target(target_of(path));
  const QTemporaryDir folder(target.absolutePath() + QStringLiteral("/.corvane-XXXXXX"));
  if (!folder.isValid()) fail_to_write(path, folder.errorString());
}

void write_whole(const QString& path, const std::function<void(const QString& name)>& write) {
  const QString target = target_of(path);
  const QTemporaryDir folder(QFileInfo(target).absolutePath() + QStringLiteral("/.corvane-XXXXXX"));
  if (!folder.isValid()) fail_to_write(path, folder.errorString());
  const QString made = folder.filePath(QFileInfo(target).fileName());
  try {
    write(made);
  } catch (const RunTimeError& error) {
    fail_to_write(path, QString::fromLocal8Bit(error.what()));
  }
  const bool placed =
      sync(made, O_RDONLY) &&
      std::rename(QFile::encodeName(made).constData(), QFile::encodeName(target).constData()) == 0;
  if (!placed) fail_to_write(path, last_error());
  sync(QFileInfo(target).absolutePath(), O_RDONLY | O_DIRECTORY);
}
