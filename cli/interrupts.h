// The signals that end the program, and the clock that they stop.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <memory>

#include "base/clock.h"

// During its lifetime SIGINT, SIGTERM and, unless ignored before, SIGHUP stop the clock. Every wait
// then ends, every exchange with the recorder fails, and the command cleans up and returns as
// usual. A second signal changes nothing. Writing to a pipe without a reader, or beyond the file
// size limit, is an error instead of a signal.
class Interrupts {
 public:
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;

  SystemClock clock;
  // The first signal received, 0 for none.
  int signal() const;
  // Throws Failure after a signal. Work without waits calls this between its steps.
  void throw_if_interrupted() const;

 private:
  std::array<int, 2> pipe_ = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
};
