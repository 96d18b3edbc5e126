// How far an export is, and whether it has to end: told by the thread that exports, asked and
// ended by the one that shows it.
#pragma once

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "base/errors.h"

// The program is ending, and the export with it.
class ExportStopped : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

class ExportProgress {
 public:
  // Whole percent, 0 before the first. Throws ExportStopped once the export has to end.
  void reach(int percent) {
    {
      const std::lock_guard lock(mutex_);
      if (reached_.empty() || reached_.back() != percent) reached_.push_back(percent);
    }
    if (stopped_) throw ExportStopped("program ends");
  }
  // The share of samples that are written, between `start` and 99 percent: what stays is saving.
  void reach_sample(int start, int done, int total) {
    reach(start + static_cast<int>(static_cast<long long>(99 - start) * done / total));
  }
  // What was reached since the last call, so that none is passed over however short it stood.
  std::vector<int> newly_reached() {
    const std::lock_guard lock(mutex_);
    return std::exchange(reached_, {});
  }

  void stop() { stopped_ = true; }
  bool stopped() const { return stopped_; }

 private:
  std::mutex mutex_;
  std::vector<int> reached_;
  std::atomic<bool> stopped_ = false;
};
