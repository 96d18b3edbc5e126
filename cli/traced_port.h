// A serial port that records its bytes and their times.
#pragma once

#include <QDateTime>

#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/serial_port.h"

// Bytes that were sent or received together.
struct TracedBytes {
  bool sent = false;
  QDateTime time;  // when the first byte was sent or first noticed
  QByteArray bytes;
};

class TracedPort final : public SerialPort {
 public:
  // `port` and `clock` must outlive it.
  TracedPort(SerialPort& port, Clock& clock);

  // Returns the bytes sent and received since the last call.
  std::vector<TracedBytes> take_trace();
  // The last settings that the port refused; empty when it accepted all.
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
  std::optional<QDateTime> arrived_;  // when the first waiting byte was noticed
  QString refused_settings_;
};
