// A main window that only writes down what handlers do with it.
#pragma once

#include <QStringList>

#include <array>
#include <functional>

#include "app/shell.h"
#include "support/scripted.h"
#include "support/scripted_printer.h"

class FakeShell final : public Shell {
 public:
  FakeShell() {
    scripted_messages.meanwhile = [this] { note("box ", scripted_messages.shown.constLast()); };
  }

  ScriptedClock scripted_clock;
  ScriptedPort scripted_port;
  ScriptedMessages scripted_messages;
  ScriptedFileDialog scripted_dialog;
  ScriptedPrinter scripted_printer;

  // What was done, in order, one line each: "panel 1: Open File", "progress 50: 50%",
  // "data commands on", "linked commands off", "show display", "unload display",
  // "show realtime", "unload realtime", and each message box as "box Corvane: File Lose" (unless
  // a test takes ScriptedMessages::meanwhile for itself).
  QStringList log;

  // The state that the log has led to.
  std::array<QString, 4> panels;  // by their numbers 1..3
  int progress = 0;
  QString progress_text;
  bool data_commands = false;
  bool linked = false;

  // Windows that a test supplies; by default there are none and showing one only logs it. The
  // makers run when a window is asked for that is not loaded.
  std::function<frmrealtime*()> make_realtime;
  std::function<frmdisplay*()> make_display;
  frmrealtime* realtime_window = nullptr;
  frmdisplay* display_window = nullptr;
  Printer* real_printer = nullptr;  // used instead of the scripted one
  QWidget* parent_window = nullptr;
  bool is_shutting_down = false;

  Clock& clock() override { return scripted_clock; }
  SerialPort& MSComm1() override { return scripted_port; }
  MessageBox& messages() override { return scripted_messages; }
  FileDialog& CommonDialog1() override { return scripted_dialog; }
  Printer& printer() override { return real_printer ? *real_printer : scripted_printer; }
  QWidget* window() override { return parent_window; }
  void set_panel(int panel, const QString& text) override {
    note(QStringLiteral("panel %1: ").arg(panel), text);
    panels.at(static_cast<std::size_t>(panel)) = text;
  }
  void set_progress(int value, const QString& text) override {
    note(QStringLiteral("progress %1: ").arg(value), text);
    progress = value;
    progress_text = text;
  }
  void enable_data_commands(bool enabled) override {
    note("data commands ", enabled ? "on" : "off");
    data_commands = enabled;
  }
  void set_linked_commands(bool linked_now) override {
    note("linked commands ", linked_now ? "on" : "off");
    linked = linked_now;
  }
  frmrealtime* loaded_realtime() override { return realtime_window; }
  frmrealtime* realtime() override {
    if (!realtime_window && make_realtime) realtime_window = make_realtime();
    return realtime_window;
  }
  void show_realtime() override {
    note("show realtime");
    realtime();
  }
  void unload_realtime() override {
    note("unload realtime");
    realtime_window = nullptr;
  }
  frmdisplay* loaded_display() override { return display_window; }
  void show_display() override {
    note("show display");
    if (!display_window && make_display) display_window = make_display();
  }
  void unload_display() override {
    note("unload display");
    display_window = nullptr;
  }
  bool shutting_down() const override { return is_shutting_down; }

 private:
  void note(const QString& what, const QString& text = {}) { log << what + text; }
};
