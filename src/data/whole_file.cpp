#include "data/whole_file.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "base/errors.h"

namespace {

constexpr auto unbuffered_writing = QIODevice::WriteOnly | QIODevice::Unbuffered;

std::filesystem::file_type type_of(const QString& path) {
  std::error_code ignored;
  return std::filesystem::status(QFileInfo(path).filesystemAbsoluteFilePath(), ignored).type();
}

bool write_all(QFileDevice& file, std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  return file.write(bytes.data(), size) == size;
}

#ifdef Q_OS_WIN

bool force_to_disk(int file) {
  return _commit(file) == 0;
}
void force_folder_to_disk(const QString&) {}
bool reserve(QFile& file, qint64 size) {
  return file.size() >= size || file.resize(size);
}
bool keep_owner(int, const QString&) {
  return true;
}
void remove_name(int) {}
void let_writes_fail_at_the_size_limit() {}

#else

// Devices and some network file systems do not support this, which is no failure.
bool force_to_disk(int file) {
  return fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// A file's new name reaches the disk with its folder. The file itself is complete in any case, so a
// failure here is ignored.
void force_folder_to_disk(const QString& file) {
  const QFileInfo real(QFileInfo(file).canonicalFilePath());
  const int handle =
      open(QFile::encodeName(real.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  force_to_disk(handle);
  close(handle);
}

// Reserves disk space for `size` bytes without changing the existing ones.
bool reserve(QFile& file, qint64 size) {
  if (size > 0) errno = posix_fallocate(file.handle(), 0, size);
  return size == 0 || errno == 0;
}

// Gives a new file the owner and group of the older one, if any. Returns false if not permitted.
bool keep_owner(int file, const QString& older) {
  struct stat before {};
  struct stat now {};
  if (stat(QFile::encodeName(older).constData(), &before) != 0) return true;
  if (fstat(file, &now) != 0) return false;
  return (now.st_uid == before.st_uid && now.st_gid == before.st_gid) ||
         fchown(file, before.st_uid, before.st_gid) == 0;
}

// Removes the name of an open new file; it has one only on a disk that has no unnamed files.
void remove_name(int file) {
  QFile::remove(QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(file)));
}

// Without this, writing beyond the user's size limit would kill the program.
void let_writes_fail_at_the_size_limit() {
  [[maybe_unused]] static const auto before = std::signal(SIGXFSZ, SIG_IGN);
}

#endif

}  // namespace

WholeFile::WholeFile(const QString& path) : path_(path), replacement_(path) {
  using std::filesystem::file_type;
  let_writes_fail_at_the_size_limit();
  const file_type type = type_of(path);
  if (type == file_type::fifo || type == file_type::socket || type == file_type::directory) {
    throw FileError("not a file");
  }
  std::error_code ignored;
  const QFileInfo info(path);
  const bool replaceable =
      type == file_type::not_found ||
      (type == file_type::regular &&
       std::filesystem::hard_link_count(info.filesystemAbsoluteFilePath(), ignored) == 1);
  if (replaceable && replacement_.open(unbuffered_writing) &&
      keep_owner(replacement_.handle(), path)) {
    return;
  }
  discard_replacement();
  if (type == file_type::not_found || !info.isWritable()) {
    throw FileError("file cannot be opened");
  }
}

void WholeFile::write(std::string_view bytes, const std::stop_token& stop) {
  if (stop.stop_requested()) throw FileError("given up");
  if (replacement_.isOpen()) {
    replace(bytes, stop);
  } else {
    overwrite(bytes);
  }
}

void WholeFile::replace(std::string_view bytes, const std::stop_token& stop) {
  {
    const std::stop_callback remove(stop, [file = replacement_.handle()] { remove_name(file); });
    if (!write_all(replacement_, bytes) || !force_to_disk(replacement_.handle()) ||
        stop.stop_requested()) {
      discard_replacement();
      throw FileError("file cannot be written");
    }
  }
  if (replacement_.commit()) {
    force_folder_to_disk(path_);
  } else {
    // A mount point cannot be replaced, nor can another user's file in a sticky folder.
    overwrite(bytes);
  }
}

void WholeFile::overwrite(std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  const bool regular = type_of(path_) == std::filesystem::file_type::regular;
  QFile file(path_);
  const auto mode = regular ? QIODevice::ReadWrite | QIODevice::Unbuffered : unbuffered_writing;
  if (!file.open(mode | QIODevice::ExistingOnly)) throw FileError("file cannot be opened");
  if (!regular) {
    if (write_all(file, bytes) && force_to_disk(file.handle())) return;
    throw FileError("device cannot be written");
  }
  const qint64 older_size = file.size();
  // Bytes beyond the new size need no copy: they go only when the new ones are on the disk.
  const QByteArray older = file.read(size);
  if (older.size() < std::min(size, older_size)) throw FileError("file cannot be read");
  file.seek(0);
  if (reserve(file, size) && write_all(file, bytes) && force_to_disk(file.handle()) &&
      file.resize(size)) {
    force_to_disk(file.handle());
    return;
  }
  const int reason = errno;
  file.seek(0);
  file.write(older);
  file.resize(older_size);
  force_to_disk(file.handle());
  errno = reason;
  throw FileError("file cannot be written");
}

void WholeFile::discard_replacement() {
  if (!replacement_.isOpen()) return;
  const int reason = errno;
  replacement_.cancelWriting();
  replacement_.commit();  // removes it
  errno = reason;
}

void WholeFile::write_fragment(std::string_view bytes) {
  discard_replacement();
  QFile file(path_);
  if (file.open(unbuffered_writing | QIODevice::NewOnly)) write_all(file, bytes);
}

void write_whole_file(const QString& path, std::string_view bytes, const std::stop_token& stop) {
  WholeFile(path).write(bytes, stop);
}
