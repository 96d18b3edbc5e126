#include "support/simulated_port.h"

#include "app/errors.h"

void SimulatedPort::require_open() const {
  if (!open_) throw PortError("port closed");
}

void SimulatedPort::require_device() const {
  require_open();
  if (gone_) throw PortError("device gone");
}

void SimulatedPort::set_port_number(int number) {
  log << QStringLiteral("number %1").arg(number);
  if (open_) throw PortError("port open");
  number_ = number;
}

void SimulatedPort::open() {
  log << QStringLiteral("open");
  if (open_) throw PortError("port open");
  if (!recorders.contains(number_)) throw PortError("no such port");
  open_ = true;
  gone_ = false;
  waiting_.clear();
  line_ = simulator::Line(paced_);
  planned_us_.reset();
  session_ = std::make_shared<int>(number_);
}

void SimulatedPort::close() {
  log << QStringLiteral("close");
  open_ = false;
  session_.reset();
}

void SimulatedPort::unplug() {
  recorders.erase(number_);
  line_.clear();
  gone_ = true;
  if (open_ && on_activity) on_activity();
}

void SimulatedPort::set_settings(const QString& settings) {
  require_device();
  log << QStringLiteral("settings ") + settings;
  settings_ = settings;
}

int SimulatedPort::bytes_waiting() {
  require_open();
  collect();
  return static_cast<int>(waiting_.size());
}

QByteArray SimulatedPort::read_all() {
  require_open();
  collect();
  return std::exchange(waiting_, {});
}

void SimulatedPort::write(const QByteArray& bytes) {
  require_device();
  log << QStringLiteral("write ") + QString::fromLatin1(bytes.toHex(' '));
  const auto found = recorders.find(number_);
  if (!hears(bytes) || found == recorders.end() || !found->second) return;
  for (const simulator::Answer& answer : found->second->receive(bytes, clock_.now())) {
    line_.send(answer, now_us());
  }
  plan();
}

bool SimulatedPort::hears(const QByteArray& bytes) {
  if (settings_ == u"9600,M,8,1") {
    addressed_ = bytes.size() == 1;
    return addressed_;
  }
  return settings_ == u"9600,S,8,1" && std::exchange(addressed_, false);
}

void SimulatedPort::collect() {
  const simulator::Line::Arrival arrival = line_.take(now_us());
  waiting_ += arrival.bytes;
  if (arrival.unplugged) unplug();
}

// Wakes the port's user when the next bytes arrive.
void SimulatedPort::plan() {
  const auto due = line_.next_due();
  if (!due || (planned_us_ && *planned_us_ <= *due)) return;
  planned_us_ = due;
  const qint64 wait_us = std::max<qint64>(0, *due - now_us());
  clock_.after(static_cast<int>((wait_us + 999) / 1000),
               [this, session = std::weak_ptr<int>(session_)] {
                 if (session.expired()) return;
                 planned_us_.reset();
                 collect();
                 if (on_activity) on_activity();
                 plan();
               });
}
