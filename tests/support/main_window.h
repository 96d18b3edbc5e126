// A real main window in a scripted world, with a device file of its own, and what operates it: the
// windows and dialogs of a link and a download, which nearly every test of a window uses.
#pragma once

#include <QtWidgets>

#include <memory>

#include "acquire/frmhistorytime.h"
#include "app/frmmdi.h"
#include "app/user.h"
#include "base/program_folder.h"
#include "data/automation_plugin.h"
#include "device/frmport.h"
#include "monitor/frmrealtime.h"
#include "monitor/live_pane.h"
#include "monitor/setup_pane.h"
#include "support/dialogs.h"
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
  // Chooses a port, -1 for none and 4 for all of them, and a type in Select Port.
  void link(int option = 0, const QString& type = QStringLiteral("Four"), bool ok = true) {
    const auto script = when_shown<frmport>([=](frmport& dialog) {
      if (option >= 0) dialog.Option1[static_cast<std::size_t>(option)]->click();
      dialog.Combo1->setCurrentText(type);
      press(ok ? dialog.Command1 : dialog.Command2);
    });
    run(QStringLiteral("link"));
  }
  // Read Data; a dialog that `choose` leaves open is accepted.
  void read(const std::function<void(frmhistorytime&)>& choose = {}) {
    const auto script = when_shown<frmhistorytime>([=](frmhistorytime& dialog) {
      if (choose) choose(dialog);
      if (dialog.isVisible()) press(dialog.Command1);
    });
    run(QStringLiteral("read"));
  }
  // The messages shown since the last call.
  QStringList told() { return std::exchange(messages.shown, {}); }

  QTemporaryDir folder;
  ScriptedMessages messages;
  ScriptedFileDialog files;
  ScriptedPrinter printer;
  // The office plug-in of this build, loaded only when a test exports with it.
  AutomationPlugin office{QStringLiteral(CORVANE_PLUGIN_FOLDER)};
  std::unique_ptr<frmmdi> window;
};
