// A real main window in a scripted world, with a device file of its own.
#pragma once

#include <QTemporaryDir>
#include <QtWidgets>

#include <memory>

#include "app/frmmdi.h"
#include "base/program_folder.h"
#include "data/automation_plugin.h"
#include "support/runner.h"
#include "support/scripted.h"

struct MainWindow {
  // `port` and `clock` are the test's; the window is shown offscreen.
  explicit MainWindow(SerialPort& port, Clock& clock) {
    make_file(folder.filePath(QStringLiteral("device.txt")), device_file);
    set_program_folder(folder.path());
    window = std::make_unique<frmmdi>(OutsideWorld{clock, port, messages, files, printer, office});
    window->show();
  }
  ~MainWindow() {
    office.end_own_applications();
    set_program_folder({});
  }
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  static constexpr const char* device_file =
      "5\r\n"
      "\"One\",,1,Air,C,,,,,,\r\n"
      "\"Two\",,2,Air,C,Damp,%RH,,,,\r\n"
      "\"Three\",,3,Air,C,Damp,%RH,Soil,C,,\r\n"
      "\"Four\",,4,Air,C,Damp,%RH,Soil,C,Wall,C\r\n"
      "\"Broken\",,,,,,,,,,\r\n";

  void run(const QString& command) { Q_EMIT window->menu_entry(command)->triggered(); }

  QTemporaryDir folder;
  ScriptedMessages messages;
  ScriptedFileDialog files;
  ScriptedPrinter printer;
  // The office plug-in of this build, loaded only when a test exports with it.
  AutomationPlugin office{QStringLiteral(CORVANE_PLUGIN_FOLDER)};
  std::unique_ptr<frmmdi> window;
};
