#include "support/fake_shell.h"

namespace {

QString on_or_off(bool on) {
  return on ? QStringLiteral("on") : QStringLiteral("off");
}

}  // namespace

FakeShell::FakeShell() {
  scripted_messages.meanwhile = [this] {
    log << QStringLiteral("box ") + scripted_messages.shown.constLast();
  };
}

void FakeShell::set_panel(int panel, const QString& text) {
  log << QStringLiteral("panel %1: ").arg(panel) + text;
  panels.at(static_cast<std::size_t>(panel)) = text;
}

void FakeShell::set_progress(int value, const QString& text) {
  log << QStringLiteral("progress %1: ").arg(value) + text;
  progress = value;
  progress_text = text;
}

void FakeShell::enable_data_commands(bool enabled) {
  log << QStringLiteral("data commands ") + on_or_off(enabled);
  data_commands = enabled;
}

void FakeShell::set_linked_commands(bool linked_now) {
  log << QStringLiteral("linked commands ") + on_or_off(linked_now);
  linked = linked_now;
}

frmrealtime* FakeShell::realtime() {
  if (!realtime_window && make_realtime) realtime_window = make_realtime();
  return realtime_window;
}

void FakeShell::show_realtime() {
  log << QStringLiteral("show realtime");
  realtime();
}

void FakeShell::unload_realtime() {
  log << QStringLiteral("unload realtime");
  realtime_window = nullptr;
}

void FakeShell::show_display() {
  log << QStringLiteral("show display");
  if (!display_window && make_display) display_window = make_display();
}

void FakeShell::unload_display() {
  log << QStringLiteral("unload display");
  display_window = nullptr;
}
