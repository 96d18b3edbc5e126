#include "base/clock.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <QTime>
#include <QTimer>

float SystemClock::seconds_since_midnight() const {
  return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0F;
}

QDateTime SystemClock::now() const {
  QDateTime time = QDateTime::currentDateTime();
  return {time.date(), time.time(), Qt::UTC};
}

qint64 SystemClock::steady_ms() const {
  return QDeadlineTimer::current(Qt::PreciseTimer).deadline();
}

void SystemClock::sleep(int milliseconds) {
  if (!stopped()) QThread::msleep(static_cast<unsigned long>(milliseconds));
}

void SystemClock::wait(int milliseconds) {
  if (stopped()) return;
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  waits_.push_back(&loop);
  loop.exec();
  waits_.pop_back();
}

void SystemClock::wake() {
  for (QEventLoop* loop : waits_) loop->quit();
}
