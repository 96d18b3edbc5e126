// The real main window on a scripted clock, with a port for simulated recorders.
#pragma once

#include "support/main_window.h"
#include "support/simulated_port.h"

struct SimulatedWindow {
  // `paced`: answers come at the pace of 9600 baud, not at once.
  explicit SimulatedWindow(bool paced = false) : port(clock, paced) {}
  // Puts a recorder on port 1, in place of any that is there.
  void plug_in(simulator::Settings settings, const QString& fault = {}) {
    if (!fault.isEmpty()) settings.faults = {*simulator::fault_from_text(fault)};
    recorder = std::make_unique<simulator::Recorder>(settings, clock.now());
    port.recorders[1] = recorder.get();
  }
  frmrealtime* realtime() { return main.window->loaded_realtime(); }

  ScriptedClock clock;
  SimulatedPort port;
  std::unique_ptr<simulator::Recorder> recorder;
  MainWindow main{port, clock};
};
