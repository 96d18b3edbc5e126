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
  ~Connection() { port_.close(); }

  RecorderLink& link() { return link_; }
  const RecorderType& type() const { return type_; }
  int port_number() const { return port_.port_number(); }
  // "COM1 (/dev/ttyUSB0)", as it was when the recorder answered there.
  const QString& where() const { return where_; }

  // The answer to a request, tried three times. Throws Failure when there is none.
  QByteArray ask(const Request& request);
  // Opens the port anew and asks whether the recorder answers, as after an adapter was unplugged.
  bool take_up_again();

  bool interrupted() const { return interrupts_.clock.stopped(); }

 private:
  bool open(int number);
  bool answers();
  void connect_to(int number);
  void search();

  Interrupts& interrupts_;
  RecorderType type_;
  QtSerialPort port_;
  RecorderLink link_;
  QString where_;
};

// How the program calls a port.
QString port_words(int number);
