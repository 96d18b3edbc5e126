// The Real-time Data window in the real main window, linked to a simulated recorder.
#pragma once

#include "monitor/frmrecord.h"
#include "monitor/time_picker.h"
#include "support/simulated_window.h"

// Steady signals of 20.00, 21.00, 22.00, 23.00 on the four channels, and a battery just too weak.
inline simulator::Settings steady(int channels = 2) {
  simulator::Settings settings = {.channels = channels, .mask = 3, .readings = 500, .title = "AB"};
  settings.description = "三";
  settings.battery_volts = 2.49;
  settings.limits[0] = {.down = -10.5, .up = 25};
  settings.signal = [](auto, int channel) { return std::uint16_t(256 * (20 + channel)); };
  return settings;
}

// The cells of a row in the first `columns` columns, as "1|3/1/26 10:00:00 AM|20".
inline QString row_text(const QAbstractItemModel* model, int row, int columns = 9) {
  QStringList texts;
  for (int column = 0; column < std::min(columns, model->columnCount()); ++column) {
    texts << model->index(row, column).data().toString();
  }
  return texts.join('|');
}

struct MonitorWindow : SimulatedWindow {
  MonitorWindow() : SimulatedWindow(true) {
    plug_in(steady());
    User::RecorderType = 1;  // of two channels
    User::PatternBytes.fill(0);
    port.open();
    main.run("realtime");
    main.window->set_linked_commands(true);
    port.log.clear();
  }
  ~MonitorWindow() { clock.stop(); }

  LiveBuffer& buffer() { return realtime()->live().monitor().buffer; }
  void poll(int times = 1) {
    for (int i = 0; i < times; ++i) {
      Q_EMIT realtime()->live().Timer1->tick();
      clock.sleep(1000);
    }
  }
  QString link_state() const { return main.window->Sts1[1]->text(); }
  // Presses "Properties Set" and answers the question.
  void set(bool yes = true) {
    main.messages.answers = {yes};
    realtime()->setup().Command4->click();
  }
  // Enters these settings in Record Set and ends it; returns those it showed, as "1 0 00:00:05".
  QString record(bool refresh, bool record, int seconds, bool ok = true) {
    QString shown;
    const auto script = when_shown<frmrecord>([&](frmrecord& dialog) {
      for (int which : {1, 2}) shown += dialog.Check1[which]->isChecked() ? "1 " : "0 ";
      shown += dialog.DTP1->text();
      dialog.Check1[1]->setChecked(refresh);
      dialog.Check1[2]->setChecked(record);
      set_picked_seconds(*dialog.DTP1, seconds);
      press(ok ? dialog.Command1 : dialog.Command2);
    });
    main.run("record");
    return shown;
  }
  // The requests sent since the last call, without their address bytes, as "02 00 02".
  QStringList requests() {
    QString frames = std::exchange(port.log, {}).filter("write ").join('|') + '|';
    return frames.remove("write 00|").remove("write ").split('|', Qt::SkipEmptyParts);
  }
  // The messages shown since the last call, without the program's name.
  QStringList messages() {
    return std::exchange(main.messages.shown, {}).replaceInStrings("Corvane: ", "");
  }
};
