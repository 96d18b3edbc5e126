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
  explicit Program(Automation& office = office_automation())
      : window({clock, port, messages, files, printer, office}) {
    messages.set_parent(&window);
    files.set_parent(&window);
  }

  SystemClock clock;
  QtSerialPort port;
  WindowMessageBox messages;
  WindowFileDialog files;
  QtPrinter printer;
  frmmdi window;
};
