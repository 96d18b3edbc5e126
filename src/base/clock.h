// The clock: the time, pauses, and waits that let the program's events run. Tests replace it, so
// that they need no real time.
#pragma once

#include <QDateTime>

#include <vector>

class QEventLoop;

class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  // Seconds since midnight in single precision; wraps to 0 at midnight.
  virtual float seconds_since_midnight() const = 0;
  // The local wall time, kept without a zone (see base/times.h).
  virtual QDateTime now() const = 0;

  // Milliseconds since a fixed moment. Nobody sets this clock, so it can measure durations.
  virtual qint64 steady_ms() const = 0;

  // Pauses for `milliseconds`. No events run meanwhile, so nothing comes between the statements
  // before and after it. Returns at once when the clock is stopped.
  virtual void sleep(int milliseconds) = 0;

  // Runs events for at most `milliseconds`; ends early at wake() or stop(). Waits nest: an inner
  // wait must end before the outer one can.
  virtual void wait(int milliseconds) = 0;
  // Ends all waits under way, so that their callers check again for what they wait for.
  virtual void wake() = 0;

  // For shutdown: ends every wait under way, and every later pause or wait returns at once.
  void stop() {
    stopped_ = true;
    wake();
  }
  bool stopped() const { return stopped_; }

 private:
  bool stopped_ = false;
};

// The computer's own clock. Its waits are local event loops, so the processor stays idle.
class SystemClock final : public Clock {
 public:
  float seconds_since_midnight() const override;
  QDateTime now() const override;
  qint64 steady_ms() const override;
  void sleep(int milliseconds) override;
  void wait(int milliseconds) override;
  void wake() override;

 private:
  std::vector<QEventLoop*> waits_;
};
