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

const QString in_use = QStringLiteral(" is in use by another program");

// Reads the lock file that Qt and other programs make for an open device; its first line is the
// number of the process. A file left behind by a crash is removed when the port is opened, unless
// it belongs to another user.
QString lock_text(const QString& device) {
  const QString name = QString(device).remove(QStringLiteral("/dev/")).replace(u'/', u'_');
  QFile file(QStringLiteral("/var/lock/LCK..") + name);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const int process = file.readLine(32).trimmed().toInt();
  if (process == ::getpid()) return {};
  if (process > 0 && (::kill(process, 0) == 0 || errno == EPERM)) return in_use;
  const bool ours = ::geteuid() == 0 || QFileInfo(file).ownerId() == ::geteuid();
  return ours ? QString() : QStringLiteral(" is locked by the left-over file ") + file.fileName();
}

#endif

}  // namespace

// Looks at this user's processes only; those of others do not show what they have open.
QSet<QString> devices_open_elsewhere() {
  QSet<QString> all;
#ifdef Q_OS_UNIX
  const auto processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
  for (const QString& process : processes) {
    const int number = process.toInt();
    if (number <= 0 || number == ::getpid()) continue;
    QSet<QString> devices;
    // The process that made a pseudo-terminal keeps both ends open: it is the recorder, no rival.
    bool made_it = false;
    const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(process));
    const auto names = descriptors.entryList(QDir::Files | QDir::System);
    for (const QString& name : names) {
      const QString target = QFile::symLinkTarget(descriptors.filePath(name));
      if (target.startsWith(QStringLiteral("/dev/"))) devices << target;
      made_it = made_it || target.endsWith(QStringLiteral("/ptmx"));
    }
    if (!made_it) all |= devices;
  }
#endif
  return all;
}

QString port_text(const QString& device, const QSet<QString>& open_elsewhere) {
  if (device.isEmpty()) return QStringLiteral("no such port");
#ifdef Q_OS_UNIX
  if (!QFileInfo::exists(device)) return device + QStringLiteral(" is missing");
  if (::access(QFile::encodeName(device).constData(), R_OK | W_OK) != 0) {
    return device + QStringLiteral(" is not permitted: it belongs to the group ") +
           QFileInfo(device).group();
  }
  if (const QString lock = lock_text(device); !lock.isEmpty()) return device + lock;
  if (open_elsewhere.contains(device)) return device + in_use;
#endif
  return device;
}
