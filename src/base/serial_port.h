// The interface of a serial port. The program implements it with a real port, the tests with
// scripted ones.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class SerialPort {
 public:
  SerialPort() = default;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;
  virtual ~SerialPort() = default;

  // Port number, 1 for COM1. Setting it while the port is open throws PortError.
  virtual int port_number() const = 0;
  virtual void set_port_number(int number) = 0;

  // Opening an open or absent port throws PortError; closing a closed one does nothing.
  virtual void open() = 0;
  virtual void close() = 0;
  virtual bool is_open() const = 0;

  // "9600,M,8,1": baud rate, parity N, E, O, M or S, data bits, stop bits. Takes effect when all
  // bytes written before have left the line. Throws PortError when the port is closed, the text is
  // malformed or the device refuses it.
  virtual void set_settings(const QString& settings) = 0;

  // Both throw PortError on a closed port.
  virtual int bytes_waiting() = 0;
  virtual QByteArray read_all() = 0;
  // Sends the bytes. Throws PortError when the port is closed or does not accept them.
  virtual void write(const QByteArray& bytes) = 0;

  // They have no effect on a device without such a line.
  virtual void set_rts(bool on) = 0;
  virtual void set_dtr(bool on) = 0;

  // Called when bytes have arrived or the device is gone. The port's user sets it.
  std::function<void()> on_activity;
};
