// Finds the device of a port number, and parses a settings text.
#pragma once

#include <QSerialPort>
#include <QString>
#include <QStringList>

// The device of port `number` (1 for COM1): "COMn" on Windows; elsewhere the target of the symbolic
// link "comN" in `folder` if there is such a link, whether the target exists or not, else the n-th
// of `system_ports` in natural order of the names. Empty if there is no such device.
QString serial_device(int number, const QString& folder, const QStringList& system_ports);

// The serial ports that the system lists, except those without hardware.
QStringList system_serial_ports();

struct LineSettings {
  qint32 baud_rate = 9600;
  QSerialPort::Parity parity = QSerialPort::NoParity;
  QSerialPort::DataBits data_bits = QSerialPort::Data8;
  QSerialPort::StopBits stop_bits = QSerialPort::OneStop;
};

// "9600,M,8,1": baud rate, parity N, E, O, M or S, data bits 5..8, stop bits 1, 1.5 or 2.
// Throws PortError for anything else.
LineSettings line_settings(const QString& text);
