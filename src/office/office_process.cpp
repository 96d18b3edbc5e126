#include "office/office_process.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <optional>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "data/automation.h"

namespace {

constexpr int poll_interval_ms = 20;
// A process that is not stuck uses this time to delete its temporary files.
constexpr int end_limit_ms = 300;

qint64 run_office(const QStringList& arguments) {
  QProcess process;
  process.setProgram(QStringLiteral(OFFICE_PROGRAM "/soffice"));
  // No start centre, no splash screen, no offer to recover documents. Without "--headless" and
  // "--invisible", because they would hide the windows that the user opens later.
  process.setArguments(arguments + QStringList{"--nodefault", "--nologo", "--norestore"});
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), QStringLiteral("svp"));
    process.setProcessEnvironment(environment);
  }
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  qint64 id = 0;
  if (!process.startDetached(&id)) throw AutomationError("the office suite cannot be started");
  return id;
}

struct ProcessState {
  char state;
  qint64 group;
  std::int64_t processor_ms;
};

// Reads a process's state. Empty when the process has ended or the system does not report it.
std::optional<ProcessState> state_of(const QString& process) {
  QFile file(QStringLiteral("/proc/%1/stat").arg(process));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray line = file.readAll();
  // The fields after the bracketed name, which may contain any character.
  const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
  if (fields.size() < 13) return std::nullopt;
  const std::int64_t ticks = fields[11].toLongLong() + fields[12].toLongLong();
  return ProcessState{.state = fields[0].at(0),
                      .group = fields[2].toLongLong(),
                      .processor_ms = ticks * 1000 / sysconf(_SC_CLK_TCK)};
}

// A zombie, a process that has ended but was not waited for, is not alive.
bool alive(qint64 process) {
  if (process == 0 || kill(static_cast<pid_t>(process), 0) != 0) return false;
  const auto state = state_of(QString::number(process));
  return !state || state->state != 'Z';
}

}  // namespace

void OfficeProcess::start(const QStringList& arguments) {
  process_ = run_office(arguments);
  group_ = getpgid(static_cast<pid_t>(process_));
  // end() must never signal the program's own group.
  if (group_ <= 1 || group_ == getpgrp()) group_ = 0;
}

void OfficeProcess::find_server(const QString& pipe_path) {
#ifdef SO_PEERCRED
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray path = QFile::encodeName(pipe_path);
  if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) return;
  std::copy(path.cbegin(), path.cend(), address.sun_path);
  const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ucred server{};
  socklen_t size = sizeof server;
  if (::connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      getsockopt(handle, SOL_SOCKET, SO_PEERCRED, &server, &size) == 0) {
    server_ = server.pid;
  }
  close(handle);
  if (server_ != 0) {
    started_ = group_ != 0 && getpgid(static_cast<pid_t>(server_)) == group_;
    return;
  }
#endif
  // A process that passes its arguments to a running one ends at once.
  constexpr int hand_over_limit_ms = 500;
  started_ = !wait_for_end(hand_over_limit_ms);
}

bool OfficeProcess::running() const {
  return alive(process_) || (started_ && alive(server_));
}

bool OfficeProcess::wait_for_end(int milliseconds) const {
  QElapsedTimer timer;
  timer.start();
  while (running()) {
    if (timer.hasExpired(milliseconds)) return false;
    QThread::msleep(poll_interval_ms);
  }
  return true;
}

void OfficeProcess::end() const {
  if (!running()) return;
  const auto target = static_cast<pid_t>(group_ != 0 ? -group_ : process_);
  kill(target, SIGTERM);
  kill(target, SIGCONT);
  if (!wait_for_end(end_limit_ms)) kill(target, SIGKILL);
}

std::int64_t OfficeProcess::processor_ms() const {
  std::int64_t sum = 0;
  const QStringList processes = QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")});
  for (const QString& process : processes) {
    const auto state = state_of(process);
    if (!state) continue;
    const bool counts = (group_ != 0 && state->group == group_) || process.toLongLong() == server_;
    if (counts) sum += state->processor_ms;
  }
  return sum;
}
