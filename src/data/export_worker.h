// Runs an export in the background while the windows respond.
#pragma once

#include <functional>
#include <memory>

class Automation;
class ExportProgress;
class Shell;

// Runs `work`, which uses `office`, in its own thread, waits for it while events run, and shows its
// progress in the main window. Returns true when `work` completes, false when it throws or does not
// return. Gives up an application that is stuck. If the program ends meanwhile, stops the work and
// a second later gives up the application. A thread that still does not return is abandoned, so
// `work` must own what it uses.
bool run_beside_the_windows(Shell& shell, Automation& office,
                            std::function<void(ExportProgress&)> work);
