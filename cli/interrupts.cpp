#include "cli/interrupts.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

#include "cli/command.h"

namespace {

volatile std::sig_atomic_t came = 0;
int wake_up = -1;

// Does little more than write to a pipe: few calls are safe in a signal handler.
void on_signal(int number) {
  const int before = errno;
  if (came == 0) came = number;
  const char byte = 0;
  [[maybe_unused]] const auto written = write(wake_up, &byte, 1);
  errno = before;
}

}  // namespace

Interrupts::Interrupts() {
  if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  wake_up = pipe_[1];
  notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    notifier_->setEnabled(false);
    clock.stop();
  });
  struct sigaction action {};
  action.sa_handler = on_signal;
  for (const int number : {SIGINT, SIGTERM}) sigaction(number, &action, nullptr);
  // nohup ignores SIGHUP, so that the program outlives its session.
  struct sigaction before {};
  sigaction(SIGHUP, nullptr, &before);
  if (before.sa_handler != SIG_IGN) sigaction(SIGHUP, &action, nullptr);
  for (const int number : {SIGPIPE, SIGXFSZ}) std::signal(number, SIG_IGN);
}

Interrupts::~Interrupts() {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
  for (const int end : pipe_) close(end);
}

int Interrupts::signal() const {
  return came;
}

void Interrupts::throw_if_interrupted() const {
  if (came != 0) throw Failure(exit_status::file, QStringLiteral("interrupted"));
}
