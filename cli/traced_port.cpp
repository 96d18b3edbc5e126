#include "cli/traced_port.h"

#include <utility>

#include "base/errors.h"

TracedPort::TracedPort(SerialPort& port, Clock& clock) : port_(port), clock_(clock) {
  port_.on_activity = [this] {
    if (on_activity) on_activity();
  };
}

std::vector<TracedBytes> TracedPort::take_trace() {
  return std::exchange(trace_, {});
}

void TracedPort::set_settings(const QString& settings) {
  try {
    port_.set_settings(settings);
  } catch (const PortError&) {
    refused_settings_ = settings;
    throw;
  }
}

int TracedPort::bytes_waiting() {
  const int count = port_.bytes_waiting();
  if (count > 0 && !arrived_) arrived_ = clock_.now();
  return count;
}

QByteArray TracedPort::read_all() {
  QByteArray bytes = port_.read_all();
  if (!bytes.isEmpty()) trace_.push_back({false, arrived_.value_or(clock_.now()), bytes});
  arrived_.reset();
  return bytes;
}

void TracedPort::write(const QByteArray& bytes) {
  trace_.push_back({true, clock_.now(), bytes});
  port_.write(bytes);
}
