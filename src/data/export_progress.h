// The progress of an export. The thread that exports reports it; the thread that shows it reads it
// and can stop the export.
#pragma once

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "base/errors.h"

// Thrown into an export that has been stopped: the program ends, or the application is stuck.
class ExportStopped : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

class ExportProgress {
 public:
  // Reports whole percent. Throws ExportStopped after stop().
  void reach(int percent) {
    {
      const std::lock_guard lock(mutex_);
      if (reached_.empty() || reached_.back() != percent) reached_.push_back(percent);
    }
    if (stopped_) throw ExportStopped("program ends");
  }
  // Reports `done` of `total` samples as `start` to 99 percent; the file is saved at 99.
  void reach_sample(int start, int done, int total) {
    reach(start + static_cast<int>(static_cast<long long>(99 - start) * done / total));
  }
  // Every percentage reached since the last call, so that even a brief one is shown.
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
