// The Real-time Data window in the real main window, linked to a recorder in software.
#pragma once

#include <QTest>

#include <memory>

#include "app/user.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"
#include "simulator/fault.h"
#include "support/main_window.h"
#include "support/simulated_port.h"

class MonitorWindow {
 public:
  // Recorder types of the main window's device file: 0 to 3 have one to four channels.
  explicit MonitorWindow(const simulator::Settings& settings = {}, bool paced = false)
      : port(clock, paced), main(port, clock) {
    attach(settings);
    User::RecorderType = static_cast<std::int16_t>(settings.channels - 1);
    User::PatternBytes.fill(0);
    port.open();
    main.run(QStringLiteral("realtime"));
    main.window->set_linked_commands(true);
    port.log.clear();
    clock.sleeps.clear();
  }
  ~MonitorWindow() { clock.stop(); }
  MonitorWindow(const MonitorWindow&) = delete;
  MonitorWindow& operator=(const MonitorWindow&) = delete;

  // Another recorder on the same line.
  void attach(simulator::Settings settings, const char* fault = nullptr) {
    if (fault) settings.faults.push_back(*simulator::fault_from_text(QString::fromLatin1(fault)));
    recorder = std::make_unique<simulator::Recorder>(settings, clock.now());
    port.recorders[1] = recorder.get();
  }

  frmrealtime& window() { return *main.window->loaded_realtime(); }
  void tick() { Q_EMIT window().Timer1->tick(); }
  QString link_state() const { return main.window->Sts1[1]->text(); }

  // "Properties Set" with the question answered.
  void set(bool yes = true) {
    main.messages.answers = {yes};
    window().Command4->click();
  }

  // The requests sent since the last call, without their address bytes, as "02 00 02".
  QStringList requests() {
    QStringList frames;
    for (const QString& line : std::as_const(port.log)) {
      if (line.startsWith(QStringLiteral("write ")) && line != QStringLiteral("write 00")) {
        frames << line.mid(6);
      }
    }
    port.log.clear();
    return frames;
  }

  // The messages shown since the last call, without the program's name.
  QStringList messages() {
    QStringList texts = main.messages.shown;
    main.messages.shown.clear();
    texts.replaceInStrings(QStringLiteral("Corvane: "), QString());
    return texts;
  }

  ScriptedClock clock;
  std::unique_ptr<simulator::Recorder> recorder;
  SimulatedPort port;
  MainWindow main;
};
