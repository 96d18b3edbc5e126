#include "data/export_worker.h"

#include <QString>
#include <QTimer>

#include <chrono>
#include <future>
#include <thread>

#include "app/shell.h"
#include "base/clock.h"
#include "base/errors.h"
#include "data/automation.h"
#include "data/export_progress.h"
#include "data/export_watch.h"

namespace {

using std::chrono::milliseconds;

// How often the main window shows the progress, and how often the application is checked.
constexpr int show_interval_ms = 30;
constexpr int watch_interval_ms = 250;
// When the program ends, the work has `time_to_stop` to stop by itself; then the application is
// given up, and the work has `time_to_come_back` to return from it.
constexpr milliseconds time_to_stop(1000);
constexpr milliseconds time_to_come_back(500);

// Makes an exception of another kind, such as lack of memory, fail the export as well.
void with_run_time_errors_only(const std::function<void()>& work) {
  try {
    work();
  } catch (const RunTimeError&) {
    throw;
  } catch (const std::exception& error) {
    throw RunTimeError(error.what());
  }
}

class Export {
 public:
  Export(Shell& shell, Automation& office, std::function<void(ExportProgress&)> work)
      : shell_(shell), office_(office), watch_(office) {
    std::packaged_task<bool()> task([progress = progress_, work = std::move(work)] {
      return stop_at_first_failure([&] { with_run_time_errors_only([&] { work(*progress); }); });
    });
    result_ = task.get_future();
    thread_ = std::thread(std::move(task));
  }

  bool run() {
    {
      // Timers, because a dialog may run its own event loop inside this wait.
      QTimer show_timer;
      show_timer.callOnTimeout([this] { show(); });
      show_timer.start(show_interval_ms);
      QTimer watch_timer;
      watch_timer.callOnTimeout([this] { watch(); });
      watch_timer.start(watch_interval_ms);
      while (!ended_within(milliseconds(0)) && !lost_ && !shell_.shutting_down()) {
        shell_.clock().wait(show_interval_ms);
      }
    }
    if (shell_.shutting_down() && !stopped()) lost_ = true;
    if (lost_) {
      thread_.detach();
      return false;
    }
    thread_.join();
    show();
    return result_.get();
  }

 private:
  bool ended_within(milliseconds time) const {
    return result_.wait_for(time) == std::future_status::ready;
  }
  void show() {
    for (const int percent : progress_->newly_reached()) {
      shell_.set_progress(percent, QString::number(percent) + u'%');
    }
  }
  void watch() {
    if (given_up_.isValid()) {
      lost_ = lost_ || given_up_.hasExpired(time_to_come_back.count());
    } else if (watch_.stuck()) {
      give_up();
    }
  }
  // In a thread, because a stuck application can make even this call block.
  void give_up() {
    given_up_.start();
    progress_->stop();
    std::thread([&office = office_] { office.give_up(); }).detach();
  }
  // Stops the work because the program ends. Returns whether the work has returned.
  bool stopped() {
    progress_->stop();
    if (ended_within(time_to_stop)) return true;
    if (!given_up_.isValid()) give_up();
    return ended_within(time_to_come_back);
  }

  Shell& shell_;
  Automation& office_;
  ExportWatch watch_;
  std::shared_ptr<ExportProgress> progress_ = std::make_shared<ExportProgress>();
  std::future<bool> result_;
  std::thread thread_;
  QElapsedTimer given_up_;
  bool lost_ = false;
};

}  // namespace

bool run_beside_the_windows(Shell& shell, Automation& office,
                            std::function<void(ExportProgress&)> work) {
  return Export(shell, office, std::move(work)).run();
}
