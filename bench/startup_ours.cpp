// The program as main() starts it, until its window has been painted.
#include "app/clock.h"
#include "app/dialogs.h"
#include "app/frmmdi.h"
#include "app/icons.h"
#include "data/automation.h"
#include "device/qt_serial_port.h"
#include "print/qt_printer.h"
#include "until_painted.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setWindowIcon(application_icon());
  SystemClock clock;
  QtSerialPort port;
  WindowMessageBox messages;
  WindowFileDialog files;
  QtPrinter printer;
  frmmdi window({clock, port, messages, files, printer, office_automation()});
  messages.set_parent(&window);
  files.set_parent(&window);
  const UntilPainted until_painted(window);
  window.show();
  return QApplication::exec();
}
