// The real serial port.
#pragma once

#include <QSerialPort>

#include "base/serial_port.h"

class QtSerialPort final : public SerialPort {
 public:
  // Begins with port 1, 9600 baud, 8 data bits, no parity, 1 stop bit.
  QtSerialPort();

  int port_number() const override { return number_; }
  void set_port_number(int number) override;
  void open() override;
  void close() override;
  // A port whose device is gone counts as open until close(); reads, writes and settings throw.
  bool is_open() const override { return port_.isOpen() || gone_; }
  void set_settings(const QString& settings) override;
  int bytes_waiting() override;
  QByteArray read_all() override;
  void write(const QByteArray& bytes) override;
  void set_rts(bool on) override;
  void set_dtr(bool on) override;

 private:
  void tell();
  void note_error(QSerialPort::SerialPortError error);
  void require_open() const;
  void drain();

  int number_ = 1;
  bool gone_ = false;
  QSerialPort port_;
};
