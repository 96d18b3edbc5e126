#include "simulator/service.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace simulator {

namespace {

// Within an answer a paced line is checked no more often than this. Taking several bytes at a time
// keeps the processor idle, and no byte is later than this.
constexpr qint64 least_wait_us = 4000;

QDateTime wall_time_now() {
  const QDateTime time = QDateTime::currentDateTime();
  return {time.date(), time.time(), Qt::UTC};
}

void open_log(QFile& log, const QString& name) {
  if (name.isEmpty()) return;
  log.setFileName(name);
  const bool open = name == u"-" ? log.open(stdout, QIODevice::WriteOnly)
                                 : log.open(QIODevice::WriteOnly | QIODevice::Text);
  if (!open)
    throw std::runtime_error(QStringLiteral("%1: %2").arg(name, log.errorString()).toStdString());
}

}  // namespace

Service::Service(const Options& options)
    : began_(wall_time_now()),
      links_(options.links, pty_.device()),
      line_(options.paced),
      recorder_(options.recorder, began_),
      input_(pty_.descriptor(), QSocketNotifier::Read) {
  running_.start();
  open_log(log_, options.log);
  line_timer_.setSingleShot(true);
  line_timer_.setTimerType(Qt::PreciseTimer);
  connect(&line_timer_, &QTimer::timeout, this, &Service::transmit);
  connect(&input_, &QSocketNotifier::activated, this, &Service::receive);
}

void Service::receive() {
  for (const Answer& answer : recorder_.receive(pty_.read(), now())) {
    log('>', answer.request, {});
    if (answer.bytes.isEmpty()) {
      log('<', {}, answer.remark);
    } else {
      line_.send(answer, now_us());
    }
  }
  wait_for_line();
}

void Service::transmit() {
  const Line::Arrival arrival = line_.take(now_us());
  if (!arrival.bytes.isEmpty()) pty_.write(arrival.bytes);
  for (const Answer& answer : arrival.ended) log('<', answer.bytes, answer.remark);
  if (arrival.unplugged) return unplug();
  wait_for_line();
}

void Service::wait_for_line() {
  const auto due = line_.next_due(now_us() + least_wait_us);
  if (!due) return line_timer_.stop();
  const qint64 wait_ms = std::max<qint64>((*due - now_us() + 999) / 1000, 0);
  if (line_timer_.isActive() && line_timer_.remainingTime() <= wait_ms) return;
  line_timer_.start(static_cast<int>(wait_ms));
}

void Service::unplug() {
  input_.setEnabled(false);
  pty_.close();
  links_.remove();
  std::puts("unplugged");
  QCoreApplication::exit(0);
}

void Service::log(char direction, const QByteArray& frame, const QString& remark) {
  if (!log_.isOpen()) return;
  QByteArray entry = now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz ")).toLatin1();
  entry += direction;
  if (!frame.isEmpty()) entry += ' ' + frame.toHex(' ');
  if (!remark.isEmpty()) entry += "  # " + remark.toUtf8();
  log_.write(entry + '\n');
  log_.flush();
}

}  // namespace simulator
