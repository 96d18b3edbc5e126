#include <QApplication>

#include "app/clock.h"
#include "app/dialogs.h"
#include "app/frmmdi.h"
#include "app/icons.h"
#include "device/qt_serial_port.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(program_title);
  QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
  QApplication::setWindowIcon(application_icon());

  SystemClock clock;
  QtSerialPort port;
  WindowMessageBox messages;
  WindowFileDialog files;
  frmmdi window({clock, port, messages, files});
  messages.set_parent(&window);
  files.set_parent(&window);
  window.show();
  return QApplication::exec();
}
