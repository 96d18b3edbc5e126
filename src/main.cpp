#include <QApplication>
#include <QSettings>

#include "app/icons.h"
#include "base/mnemonics.h"
#include "base/own_glyphs.h"
#include "program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(program_title);
  QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
  QApplication::setWindowIcon(application_icon());
  add_own_glyphs();
  QApplication::setStyle(new LetterStyle);

  // Nothing is kept between runs, also not the folders that the toolkit's file dialog has shown.
  // No file can be made below this path.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));

  Program program;
  program.window.show();
  return QApplication::exec();
}
