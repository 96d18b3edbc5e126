#include "data/whole_file.h"

#include <QDir>
#include <QFileInfo>

#include <csignal>
#include <filesystem>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <cerrno>
#include <fcntl.h>
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
bool force_folder_to_disk(const QString&) {
  return true;
}
bool reserve(QFile& file, qint64 size) {
  return file.resize(size);
}
void let_writes_fail_at_the_size_limit() {}

#else

// Devices and some network file systems have nothing that could be forced.
bool force_to_disk(int file) {
  return fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// The new name of a file is on the disk when its folder is. A folder that may not be read cannot be
// asked for that.
bool force_folder_to_disk(const QString& file) {
  const QByteArray folder = QFile::encodeName(QFileInfo(file).absolutePath());
  const int handle = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return true;
  const bool forced = force_to_disk(handle);
  close(handle);
  return forced;
}

// Room for `size` bytes, without a change of those that are there.
bool reserve(QFile& file, qint64 size) {
  return posix_fallocate(file.handle(), 0, size) == 0;
}

// Otherwise a file beyond the user's size limit would end the program.
void let_writes_fail_at_the_size_limit() {
  static const auto before = std::signal(SIGXFSZ, SIG_IGN);
  static_cast<void>(before);
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
  const bool replaceable = type == file_type::regular || type == file_type::not_found;
  if (replaceable && replacement_.open(unbuffered_writing)) return;
  if (type == file_type::not_found || !QFileInfo(path).isWritable()) {
    throw FileError("file cannot be opened");
  }
}

void WholeFile::write(std::string_view bytes) {
  if (replacement_.isOpen()) {
    replace(bytes);
  } else {
    overwrite(bytes);
  }
}

void WholeFile::replace(std::string_view bytes) {
  if (!write_all(replacement_, bytes) || !force_to_disk(replacement_.handle())) {
    replacement_.cancelWriting();
    replacement_.commit();  // removes it
    throw FileError("file cannot be written");
  }
  if (!replacement_.commit()) {
    // A file that is a mount point, or another user's in a sticky folder, cannot be replaced.
    overwrite(bytes);
  } else if (!force_folder_to_disk(path_)) {
    throw FileError("folder cannot be written");
  }
}

void WholeFile::overwrite(std::string_view bytes) {
  const auto size = static_cast<qint64>(bytes.size());
  const bool regular = type_of(path_) == std::filesystem::file_type::regular;
  QFile file(path_);
  const auto mode = regular ? QIODevice::ReadWrite | QIODevice::Unbuffered : unbuffered_writing;
  if (!file.open(mode | QIODevice::ExistingOnly)) throw FileError("file cannot be opened");
  const qint64 older_size = file.size();
  if (regular && size > older_size && !reserve(file, size)) {
    file.resize(older_size);
    throw FileError("no room for the file");
  }
  if (!write_all(file, bytes) || (regular && !file.resize(size)) || !force_to_disk(file.handle())) {
    throw FileError("file cannot be written");
  }
}

void WholeFile::write_fragment(std::string_view bytes) const {
  QFile file(path_);
  if (file.open(unbuffered_writing | QIODevice::NewOnly)) write_all(file, bytes);
}

void write_whole_file(const QString& path, std::string_view bytes) {
  WholeFile(path).write(bytes);
}
