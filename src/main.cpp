#include <QApplication>

#include "app/icons.h"
#include "base/mnemonics.h"
#include "program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(program_title);
  QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
  QApplication::setWindowIcon(application_icon());
  QApplication::setStyle(new LetterStyle);

  Program program;
  program.window.show();
  return QApplication::exec();
}
