// Runs an export beside the windows, which stay alive meanwhile.
#pragma once

#include <functional>
#include <memory>

class ExportProgress;
class Shell;

// Runs `work` in a thread of its own and waits for it while events run, showing its progress in
// the main window. Gives whether it ran to its end; a RunTimeError in it is a failure. When the
// program ends meanwhile the work is told to stop and given 15 seconds for it. If it stands
// longer than that in a call to another program it is left behind: `work` must therefore own what
// it uses.
bool run_beside_the_windows(Shell& shell, std::function<void(ExportProgress&)> work);
