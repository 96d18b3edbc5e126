// How far an export is, and whether it has to end: told by the thread that exports, asked and
// ended by the one that shows it.
#pragma once

#include <atomic>

#include "app/errors.h"

// The program is ending, and the export with it.
class ExportStopped : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

class ExportProgress {
 public:
  // Whole percent, 0 before the first. Throws ExportStopped once the export has to end.
  void reach(int percent) {
    percent_ = percent;
    if (stopped_) throw ExportStopped("program ends");
  }
  // The share of samples that are written, between `start` and 99 percent: what stays is saving.
  void reach_sample(int start, int done, int total) {
    reach(start + static_cast<int>(static_cast<long long>(99 - start) * done / total));
  }
  int percent() const { return percent_; }

  void stop() { stopped_ = true; }
  bool stopped() const { return stopped_; }

 private:
  std::atomic<int> percent_ = 0;
  std::atomic<bool> stopped_ = false;
};
