// A timer whose switch is separate from its interval: it keeps its interval while it is off, and
// does not tick with an interval of 0 even if it is on. It goes on ticking while the handler of an
// earlier tick waits.
#pragma once

#include <QTimer>

class IntervalTimer : public QObject {
  Q_OBJECT

 public:
  // `interval` in milliseconds.
  explicit IntervalTimer(int interval, QObject* parent = nullptr);

  bool enabled() const { return enabled_; }
  int interval() const { return interval_; }
  void set_enabled(bool enabled);
  void set_interval(int interval);

 Q_SIGNALS:
  void tick();

 private:
  void apply();
  void pass_on();

  QTimer timer_;
  int interval_;
  bool enabled_ = false;
};
