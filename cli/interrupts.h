// Signals that end the program, and the clock that they stop.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <memory>

#include "base/clock.h"

// While it lives SIGINT, SIGTERM and, unless ignored before, SIGHUP stop the clock: every wait
// ends, every exchange with the recorder fails, and the command leaves by its usual way, in which
// it clears up. A second one changes nothing. Writing to a pipe that nobody reads, or beyond the
// size limit for files, is an error and no signal.
class Interrupts {
 public:
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  SystemClock clock;
  // The signal that came, 0 for none.
  int signal() const;
  // Throws Failure when one came: for work without a wait, between its steps.
  void throw_if_interrupted() const;

 private:
  std::array<int, 2> pipe_ = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
};
