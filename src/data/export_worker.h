// Runs an export beside the windows, which stay alive meanwhile.
#pragma once

#include <functional>
#include <memory>

class Automation;
class ExportProgress;
class Shell;

// Runs `work`, which uses `office`, in a thread of its own and waits for it while events run,
// showing its progress in the main window. Gives whether it ran to its end; a RunTimeError in it is
// a failure. An application that is stuck is given up. When the program ends meanwhile the work is
// told to stop, and a second later the application is given up. Work that does not come back from
// that either is left behind: `work` must therefore own what it uses.
bool run_beside_the_windows(Shell& shell, Automation& office,
                            std::function<void(ExportProgress&)> work);
