// The main window in the real world: what main() shows, and what measures or shows the program
// does.
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
