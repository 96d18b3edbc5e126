// What there is to print when a test begins: smooth curves, one per channel, in one graph.
#pragma once

#include <cmath>

#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "support/recordings.h"
#include "support/simulated_window.h"

struct PrintWorld : SimulatedWindow {
  explicit PrintWorld(int samples = 100, int channels = 4) {
    Recording& recording = User::recording;
    fill(recording, samples, channels);
    recording.ChannelInfo[0] = {"4", "3", "2", "1"};
    recording.ChannelStats = {{{28, 38, 48, 58}, {12, 22, 32, 42}, {20, 30, 40, 50}}};
    for (int n = 0; n < samples; ++n) {
      for (int c = 0; c < channels; ++c) {
        recording.SampleValues(n, c) =
            20 + 10 * float(c) + 8 * std::sin(6.28F * float(c + 1) * float(n) / float(samples));
      }
    }
    User::AxisHigh = {30, 40, 50, 60, 0};
    User::AxisLow = {10, 20, 30, 40, 0};
    User::PrintChannels = {1, 1, 1, 1, 1};
  }
  Shell& shell = *main.window;
  ScriptedPrinter& printer = main.printer;
  QStringList& messages = main.messages.shown;
};

inline const QStringList printer_error = {"Corvane: Default Printer Error"};
