// A recorder on a port, as the options say.
#pragma once

#include <QString>

#include "cli/arguments.h"
#include "cli/interrupts.h"
#include "device/device_table.h"
#include "device/qt_serial_port.h"
#include "device/recorder_link.h"

// The device file and the type that --type names.
struct RecorderType {
  // Throws Failure for a missing device file and a type that it does not have.
  explicit RecorderType(const Arguments& arguments);

  QString name() const { return table.text(0, row); }
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
  // "COM1 (/dev/ttyUSB0)", as it was when the recorder answered there.
  const QString& where() const { return where_; }

  // The answer to a request, tried three times. Throws Failure when there is none.
  QByteArray ask(const Request& request);
  // A port that is kept open keeps other programs out, and an adapter that is plugged in again from
  // getting its old name.
  void close() { port_.close(); }
  // Looks for the recorder as at first. The port is closed where it does not answer.
  bool take_up_again();

  bool interrupted() const { return interrupts_.clock.stopped(); }

 private:
  void find();
  bool open(int number);
  bool answers();
  void connect_to(int number);
  void search();

  Interrupts& interrupts_;
  std::optional<int> number_;  // nothing for the search
  RecorderType type_;
  QtSerialPort port_;
  RecorderLink link_;
  QString where_;
};

// How the program calls a port.
QString port_words(int number);
