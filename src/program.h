// The main window with its real clock, port, dialogs, files, printer and office programs. Used by
// main() and by programs that measure or demonstrate Corvane.
#pragma once

#include "app/frmmdi.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "data/automation.h"
#include "device/qt_serial_port.h"
#include "print/qt_printer.h"

struct Program {
  explicit Program(Automation& office_programs = office_automation())
      : office(office_programs), window({clock, port, messages, files, printer, office}) {
    messages.set_parent(&window);
    files.set_parent(&window);
  }

  ~Program() { office.end_own_applications(); }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Automation& office;
  SystemClock clock;
  QtSerialPort port;
  WindowMessageBox messages;
  WindowFileDialog files;
  QtPrinter printer;
  frmmdi window;
};
