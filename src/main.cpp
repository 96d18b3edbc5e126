#include <QApplication>

#include "app/icons.h"
#include "base/own_glyphs.h"
#include "program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(program_title);
  QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
  QApplication::setWindowIcon(application_icon());
  add_own_glyphs();

  Program program;
  program.window.show();
  return QApplication::exec();
}
