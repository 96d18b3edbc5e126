#include "base/interval_timer.h"

IntervalTimer::IntervalTimer(int interval, QObject* parent) : QObject(parent), interval_(interval) {
  // A timer whose handler still runs does not fire. So the handler is called later, not by the
  // timer.
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
