#include "base/interval_timer.h"

IntervalTimer::IntervalTimer(int interval, QObject* parent) : QObject(parent), interval_(interval) {
  connect(&timer_, &QTimer::timeout, this, &IntervalTimer::tick);
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
