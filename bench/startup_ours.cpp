// The program as main() starts it, until its window is painted.
#include "app/icons.h"
#include "program.h"
#include "until_painted.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setWindowIcon(application_icon());
  Program program;
  const UntilPainted until_painted(program.window);
  program.window.show();
  return QApplication::exec();
}
