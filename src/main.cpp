#include <QApplication>

#include "app/icons.h"
#include "program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(program_title);
  QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
  QApplication::setWindowIcon(application_icon());

  Program program;
  program.window.show();
  return QApplication::exec();
}
