// corvane-tour WORK FOLDER: plays the guided tour on the current display with WORK as the program's
// folder (device.txt, and a recorder at the link com1) and leaves pictures and files in FOLDER.
// Exit status 0 only if every step did what it says.
#include <QApplication>

#include <cstdio>

#include "app/icons.h"
#include "base/mnemonics.h"
#include "base/program_folder.h"
#include "data/automation_plugin.h"
#include "guided_tour/tour.h"
#include "program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setStyle(new LetterStyle);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 3) {
    std::fputs("corvane-tour WORK FOLDER\n", stderr);
    return 2;
  }
  QApplication::setApplicationName(program_title);
  QApplication::setWindowIcon(application_icon());
  set_program_folder(arguments[1]);

  AutomationPlugin office(QStringLiteral(CORVANE_PLUGIN_FOLDER));
  Program program(office);
  program.window.show();

  Tour tour(program.window, arguments[1], arguments[2]);
  for (const TourStep step : tour_steps()) step(tour);
  program.window.close();
  return 0;
}
