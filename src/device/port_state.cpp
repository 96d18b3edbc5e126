#include "device/port_state.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <signal.h>
#include <unistd.h>
#endif

namespace {

#ifdef Q_OS_UNIX

// Programs that keep to the old custom write their process number into a lock file per device.
bool has_lock_file(const QString& device) {
  QFile file(QStringLiteral("/var/lock/LCK..") + QFileInfo(device).fileName());
  if (!file.open(QIODevice::ReadOnly)) return false;
  const int process = file.read(32).trimmed().toInt();
  return process > 0 && process != ::getpid() && (::kill(process, 0) == 0 || errno == EPERM);
}

// The user's own processes tell what they have open; those of others do not.
bool is_open_elsewhere(const QString& device) {
  const auto processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
  for (const QString& process : processes) {
    const int number = process.toInt();
    if (number <= 0 || number == ::getpid()) continue;
    bool has_device = false;
    // Who made a pseudo-terminal keeps both of its ends; that is the recorder, not a rival.
    bool made_it = false;
    const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(process));
    const auto names = descriptors.entryList(QDir::Files | QDir::System);
    for (const QString& name : names) {
      const QString target = QFile::symLinkTarget(descriptors.filePath(name));
      has_device = has_device || target == device;
      made_it = made_it || target.endsWith(QStringLiteral("/ptmx"));
    }
    if (has_device && !made_it) return true;
  }
  return false;
}

#endif

}  // namespace

QString port_text(const QString& device) {
  if (device.isEmpty()) return QStringLiteral("no such port");
#ifdef Q_OS_UNIX
  if (!QFileInfo::exists(device)) return device + QStringLiteral(" is missing");
  if (::access(QFile::encodeName(device).constData(), R_OK | W_OK) != 0) {
    return device + QStringLiteral(" is not permitted: it belongs to the group ") +
           QFileInfo(device).group();
  }
  if (has_lock_file(device) || is_open_elsewhere(device)) {
    return device + QStringLiteral(" is in use by another program");
  }
#endif
  return device;
}
