#include "simulator/pty.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <stdlib.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace simulator {

namespace {

int checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

void set_flag(int descriptor, int get, int set, int flag) {
  checked(fcntl(descriptor, set, checked(fcntl(descriptor, get), "fcntl") | flag), "fcntl");
}

// Switches off echo and line editing, so that bytes pass unchanged from the first one on.
void make_raw(int descriptor) {
  termios settings{};
  checked(tcgetattr(descriptor, &settings), "terminal settings");
  cfmakeraw(&settings);
  checked(tcsetattr(descriptor, TCSANOW, &settings), "terminal settings");
}

// A signal handler may do little more than write to a pipe.
std::array<int, 2> signal_pipe = {-1, -1};

void on_signal(int) {
  const int before = errno;
  const char byte = 0;
  [[maybe_unused]] const auto written = ::write(signal_pipe[1], &byte, 1);
  errno = before;
}

}  // namespace

Pty::Pty() {
  try {
    master_ = checked(posix_openpt(O_RDWR | O_NOCTTY), "pseudo-terminal");
    set_flag(master_, F_GETFD, F_SETFD, FD_CLOEXEC);
    set_flag(master_, F_GETFL, F_SETFL, O_NONBLOCK);
    checked(grantpt(master_), "pseudo-terminal");
    checked(unlockpt(master_), "pseudo-terminal");
    const char* name = ptsname(master_);
    checked(name ? 0 : -1, "pseudo-terminal");
    device_ = QString::fromLocal8Bit(name);
    slave_ = checked(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC), name);
    make_raw(slave_);
  } catch (const std::system_error&) {
    close();
    throw;
  }
}

QByteArray Pty::read() {
  QByteArray bytes(4096, Qt::Uninitialized);
  const auto count = ::read(master_, bytes.data(), static_cast<std::size_t>(bytes.size()));
  bytes.truncate(std::max<qsizetype>(0, count));
  return bytes;
}

void Pty::write(const QByteArray& bytes) {
  [[maybe_unused]] const auto written =
      ::write(master_, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void Pty::close() {
  if (slave_ >= 0) ::close(slave_);
  if (master_ >= 0) ::close(master_);
  slave_ = master_ = -1;
}

void quit_on_signals() {
  checked(pipe(signal_pipe.data()), "pipe");
  for (const int end : signal_pipe) set_flag(end, F_GETFD, F_SETFD, FD_CLOEXEC);
  auto* notifier = new QSocketNotifier(signal_pipe[0], QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] { QCoreApplication::exit(0); });
  struct sigaction action {};
  action.sa_handler = on_signal;
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    checked(sigaction(signal, &action, nullptr), "signals");
  }
}

}  // namespace simulator
