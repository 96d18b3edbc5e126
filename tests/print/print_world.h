// What is to be printed when a test begins: a Recording of four channels in one graph.
#pragma once

#include "app/user.h"
#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "print/sample_recording.h"
#include "support/dialogs.h"
#include "support/fake_shell.h"
#include "support/runner.h"

struct PrintWorld {
  PrintWorld() {
    User::recording = Recording();
    fill_recording(User::recording, 100, Recording::max_channels);
    User::AxisHigh = {30, 40, 50, 60, 0};
    User::AxisLow = {10, 20, 30, 40, 0};
    User::PrintChannels = {1, 1, 1, 1, 1};
  }
  FakeShell shell;
  ScriptedPrinter& printer = shell.scripted_printer;
  QStringList& messages = shell.scripted_messages.shown;
};

inline const QStringList printer_error = {"Corvane: Default Printer Error"};
