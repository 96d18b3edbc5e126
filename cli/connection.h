// The connection to the recorder that the options select.
#pragma once

#include <QString>

#include "cli/arguments.h"
#include "cli/interrupts.h"
#include "device/device_table.h"
#include "device/qt_serial_port.h"
#include "device/recorder_link.h"

// The device file, and the recorder type that --type names.
struct RecorderType {
  // Throws Failure for a missing or empty device file, an unknown type, or one without channels.
  explicit RecorderType(const Arguments& arguments);

  QString name() const { return table.type_name(row); }
  // "TH4 (4 channels)"
  QString words() const;

  DeviceTable table;
  int row = 0;
  int channels = 1;
};

class Connection {
 public:
  // Looks for the recorder. Throws Failure when none answers.
  Connection(const Arguments& arguments, Interrupts& interrupts);
  ~Connection() { close(); }

  RecorderLink& link() { return link_; }
  const RecorderType& type() const { return type_; }
  int port_number() const { return port_.port_number(); }
  // "COM1 (/dev/ttyUSB0)", the device as it was when the recorder answered.
  const QString& where() const { return where_; }

  // Returns the answer to a request after at most three tries. Throws Failure when there is none.
  QByteArray ask(const Request& request);
  // Closes the port. An open one blocks other programs, and an adapter that is plugged in again
  // would not get its old name.
  void close() { port_.close(); }
  // Looks for the recorder as the constructor does. If none answers, closes the port.
  bool reconnect();

  bool interrupted() const { return interrupts_.clock.stopped(); }

 private:
  void find();
  bool open(int number);
  bool answers();
  void connect_to(int number);
  void search();

  Interrupts& interrupts_;
  std::optional<int> number_;  // empty: search all ports
  RecorderType type_;
  QtSerialPort port_;
  RecorderLink link_;
  QString where_;
};

// The port's name in messages: "COM1 (/dev/ttyUSB0)".
QString port_words(int number);
