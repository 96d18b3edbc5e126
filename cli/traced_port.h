// A serial port whose bytes are written down, with their times.
#pragma once

#include <QDateTime>

#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/serial_port.h"

// What went over the line at one time.
struct TracedBytes {
  bool sent = false;
  QDateTime time;  // of the first byte, as far as it is known
  QByteArray bytes;
};

class TracedPort final : public SerialPort {
 public:
  // Both outlive it.
  TracedPort(SerialPort& port, Clock& clock);

  // What has gone over the line since the last call.
  std::vector<TracedBytes> take_trace();
  // The settings that the port refused; empty when it took all.
  const QString& refused_settings() const { return refused_settings_; }

  int port_number() const override { return port_.port_number(); }
  void set_port_number(int number) override { port_.set_port_number(number); }
  void open() override { port_.open(); }
  void close() override { port_.close(); }
  bool is_open() const override { return port_.is_open(); }
  void set_settings(const QString& settings) override;
  int bytes_waiting() override;
  QByteArray read_all() override;
  void write(const QByteArray& bytes) override;
  void set_rts(bool on) override { port_.set_rts(on); }
  void set_dtr(bool on) override { port_.set_dtr(on); }

 private:
  SerialPort& port_;
  Clock& clock_;
  std::vector<TracedBytes> trace_;
  std::optional<QDateTime> arrived_;  // the first of the bytes that wait
  QString refused_settings_;
};
