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

  // The program keeps nothing between runs, not even the folders shown in the toolkit's file
  // dialog: no settings file can be created below this path.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));

  Program program;
  program.window.show();
  return QApplication::exec();
}
