#include "base/interval_timer.h"

IntervalTimer::IntervalTimer(int interval, QObject* parent) : QObject(parent), interval_(interval) {
  // QTimer does not fire while its own handler runs. So the timer only queues a call of the
  // handler.
  connect(&timer_, &QTimer::timeout, this, &IntervalTimer::pass_on, Qt::QueuedConnection);
}

void IntervalTimer::pass_on() {
  if (timer_.isActive()) Q_EMIT tick();
}

void IntervalTimer::set_enabled(bool enabled) {
  enabled_ = enabled;
  apply();
}

void IntervalTimer::set_interval(int interval) {
  interval_ = interval;
  apply();
}

void IntervalTimer::apply() {
  if (enabled_ && interval_ > 0) {
    timer_.start(interval_);
  } else {
    timer_.stop();
  }
}
