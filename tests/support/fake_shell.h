// A main window that only writes down what handlers do with it.
#pragma once

#include <QStringList>

#include "app/shell.h"
#include "support/scripted_printer.h"
#include "support/simulated_port.h"

class FakeShell final : public Shell {
 public:
  FakeShell() {
    scripted_messages.meanwhile = [this] { note("box ", scripted_messages.shown.constLast()); };
  }

  ScriptedClock scripted_clock;
  SimulatedPort scripted_port{scripted_clock};
  ScriptedMessages scripted_messages;
  ScriptedFileDialog scripted_dialog;
  ScriptedPrinter scripted_printer;

  // What was done, in order, one line each: "panel 1: Open File", "progress 50: 50%",
  // "data commands on", "show display", and each message box as "box Corvane: File Lose" (unless
  // a test takes ScriptedMessages::meanwhile for itself).
  QStringList log;
  // What a test supplies; by default there is no window, and showing one only logs it.
  frmdisplay* display_window = nullptr;
  Printer* real_printer = nullptr;  // used instead of the scripted one

  Clock& clock() override { return scripted_clock; }
  SerialPort& MSComm1() override { return scripted_port; }
  MessageBox& messages() override { return scripted_messages; }
  FileDialog& CommonDialog1() override { return scripted_dialog; }
  Printer& printer() override { return real_printer ? *real_printer : scripted_printer; }
  QWidget* window() override { return nullptr; }
  void set_panel(int panel, const QString& text) override {
    note(QStringLiteral("panel %1: ").arg(panel), text);
  }
  void set_progress(int value, const QString& text) override {
    note(QStringLiteral("progress %1: ").arg(value), text);
  }
  void enable_data_commands(bool on) override { note("data commands ", on ? "on" : "off"); }
  void set_linked_commands(bool on) override { note("linked commands ", on ? "on" : "off"); }
  frmrealtime* loaded_realtime() override { return nullptr; }
  frmrealtime* realtime() override { return nullptr; }
  void show_realtime() override { note("show realtime"); }
  void unload_realtime() override { note("unload realtime"); }
  frmdisplay* loaded_display() override { return display_window; }
  void show_display() override { note("show display"); }
  void unload_display() override { note("unload display"); }
  bool shutting_down() const override { return scripted_clock.stopped(); }

 private:
  void note(const QString& what, const QString& text = {}) { log << what + text; }
};
