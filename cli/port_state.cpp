#include "cli/port_state.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include "base/program_folder.h"
#include "device/port_names.h"

namespace {

constexpr unsigned first_pseudo_terminal = 136;  // major device numbers of Linux
constexpr unsigned last_pseudo_terminal = 143;

// The folders where programs leave lock files, in the order in which Qt's serial ports search them.
const QStringList& lock_folders() {
  static const QStringList folders = {"/var/lock",         "/etc/locks", "/var/spool/locks",
                                      "/var/spool/uucp",   "/tmp",       "/var/tmp",
                                      "/var/lock/lockdev", "/run/lock"};
  return folders;
}

struct Descriptor {
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() {
    if (number >= 0) close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number;
};

QString process_name(qint64 pid) {
  QFile file(QStringLiteral("/proc/%1/comm").arg(pid));
  if (!file.open(QIODevice::ReadOnly)) return QStringLiteral("process %1").arg(pid);
  return QStringLiteral("%1 (process %2)")
      .arg(QString::fromLocal8Bit(file.readAll()).trimmed())
      .arg(pid);
}

// Returns a program that has the device open, if this user may see it. The program at the other end
// of a pseudo-terminal does not count.
QString user_of(const QString& device) {
  for (const QString& pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    bool number = false;
    const qint64 process = pid.toLongLong(&number);
    if (!number || process == getpid()) continue;
    bool uses = false;
    bool other_end = false;
    const QDir files(QStringLiteral("/proc/%1/fd").arg(pid));
    for (const QFileInfo& file : files.entryInfoList(QDir::Files | QDir::System)) {
      const QString target = file.symLinkTarget();
      uses = uses || target == device;
      other_end = other_end || target == u"/dev/ptmx" || target == u"/dev/pts/ptmx";
    }
    if (uses && !other_end) return process_name(process);
  }
  return {};
}

QString in_use(const QString& device, const QString& how) {
  const QString user = user_of(device);
  return QStringLiteral("is in use by %1: %2")
      .arg(user.isEmpty() ? QStringLiteral("another program") : user, how);
}

// Describes the lock file of a running program; empty when there is none.
QString lock_file_words(const QString& device) {
  QString name = QString(device).remove(QStringLiteral("/dev/")).replace(u'/', u'_');
  for (const QString& folder : lock_folders()) {
    QFile file(folder + QStringLiteral("/LCK..") + name);
    if (!file.open(QIODevice::ReadOnly)) continue;
    const auto pid = static_cast<pid_t>(file.readLine(64).trimmed().toInt());
    const bool runs = pid > 0 && pid != getpid() && (kill(pid, 0) == 0 || errno == EPERM);
    if (runs) {
      return QStringLiteral("is in use by %1: it has the lock file %2")
          .arg(process_name(pid), file.fileName());
    }
  }
  return {};
}

QString group_of(const QString& device) {
  struct stat status {};
  if (stat(QFile::encodeName(device).constData(), &status) != 0) return {};
  const group* entry = getgrgid(status.st_gid);
  return (status.st_mode & S_IRGRP) && entry ? QString::fromLocal8Bit(entry->gr_name) : QString();
}

void forbid(PortState& state) {
  state.kind = PortState::Kind::forbidden;
  const QString group = group_of(state.device);
  state.words = QStringLiteral("may not be opened: permission denied");
  state.advice = group.isEmpty() || group == u"root"
                     ? QStringLiteral("Ask the administrator for access to %1.").arg(state.device)
                     : QStringLiteral("Join the group %1 (sudo adduser $USER %1) and log in again.")
                           .arg(group);
}

void occupy(PortState& state, const QString& words) {
  state.kind = PortState::Kind::busy;
  state.words = words;
  state.advice = QStringLiteral("End that program, or unlink there, and try again.");
}

bool is_pseudo_terminal(const struct stat& status) {
  return major(status.st_rdev) >= first_pseudo_terminal &&
         major(status.st_rdev) <= last_pseudo_terminal;
}

// Sets mark parity and reads it back to find out whether the driver supports it.
QString parity_words(int port) {
  termios before{};
  if (tcgetattr(port, &before) != 0) return QStringLiteral("mark and space parity: no");
  termios wanted = before;
  wanted.c_cflag |= PARENB | PARODD | CMSPAR;
  termios taken{};
  constexpr tcflag_t mark = PARENB | PARODD | CMSPAR;
  const bool works = tcsetattr(port, TCSANOW, &wanted) == 0 && tcgetattr(port, &taken) == 0 &&
                     (taken.c_cflag & mark) == mark;
  tcsetattr(port, TCSANOW, &before);
  return works ? QStringLiteral("mark and space parity: yes")
               : QStringLiteral("mark and space parity: no");
}

void look_at_open_port(int port, const struct stat& status, PortState& state) {
  int exclusive = 0;
  if (ioctl(port, TIOCGEXCL, &exclusive) == 0 && exclusive != 0) {
    return occupy(state,
                  in_use(state.device, QStringLiteral("it is opened exclusively (TIOCEXCL)")));
  }
  if (flock(port, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    return occupy(state, in_use(state.device, QStringLiteral("it is locked (flock)")));
  }
  const QString user = user_of(state.device);
  if (!user.isEmpty()) {
    return occupy(state, QStringLiteral("is in use by %1: it has the device open").arg(user));
  }
  state.kind = PortState::Kind::free;
  state.words = QStringLiteral("may be opened");
  state.parity = is_pseudo_terminal(status)
                     ? QStringLiteral("a pseudo-terminal, which needs no parity")
                     : parity_words(port);
}

void open_and_look(const struct stat& status, PortState& state) {
  const Descriptor port(open(QFile::encodeName(state.device).constData(),
                             O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (port.number >= 0) return look_at_open_port(port.number, status, state);
  const int error = errno;
  if (error == EACCES || error == EPERM) return forbid(state);
  if (error == EBUSY) {
    return occupy(state,
                  in_use(state.device, QStringLiteral("it is opened exclusively (TIOCEXCL)")));
  }
  state.kind = PortState::Kind::broken;
  state.words = QStringLiteral("cannot be opened: ") + QString::fromLocal8Bit(std::strerror(error));
  state.advice = QStringLiteral("Pull the adapter out and plug it in again.");
}

}  // namespace

PortState look_at_port(int number) {
  PortState state;
  state.device = serial_device(number, program_folder(), system_serial_ports());
  struct stat status {};
  const bool exists =
      !state.device.isEmpty() && stat(QFile::encodeName(state.device).constData(), &status) == 0;
  if (!exists) {
    const bool dangling =
        QFileInfo(QStringLiteral("%1/com%2").arg(program_folder()).arg(number)).isSymLink();
    state.words = dangling ? QStringLiteral("does not exist: the link com%1 in %2 leads nowhere")
                                 .arg(number)
                                 .arg(program_folder())
                           : QStringLiteral("does not exist");
    state.advice =
        QStringLiteral("Plug the adapter in; corvane-cli ports shows the ports there are.");
  } else if (!S_ISCHR(status.st_mode)) {
    state.kind = PortState::Kind::broken;
    state.words = QStringLiteral("is no serial port");
    state.advice = QStringLiteral("Have the link com%1 lead to a serial port.").arg(number);
  } else if (const QString lock = lock_file_words(state.device); !lock.isEmpty()) {
    occupy(state, lock);
  } else {
    open_and_look(status, state);
  }
  return state;
}
