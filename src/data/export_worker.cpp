#include "data/export_worker.h"

#include <QString>

#include <chrono>
#include <future>
#include <thread>

#include "app/clock.h"
#include "app/errors.h"
#include "app/shell.h"
#include "data/export_progress.h"

namespace {

// How often the windows are shown how far the work is.
constexpr int look_interval_ms = 30;
constexpr std::chrono::seconds time_to_stop(5);

}  // namespace

bool run_beside_the_windows(Shell& shell, std::function<void(ExportProgress&)> work) {
  const auto progress = std::make_shared<ExportProgress>();
  std::packaged_task<bool()> task([progress, work = std::move(work)] {
    return stop_at_first_failure([&] { work(*progress); });
  });
  std::future<bool> result = task.get_future();
  std::thread thread(std::move(task));

  int shown = 0;
  const auto show = [&] {
    const int percent = progress->percent();
    if (percent != shown) shell.set_progress(percent, QString::number(percent) + u'%');
    shown = percent;
  };
  const auto ended = [&result] {
    return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
  };
  while (!ended() && !shell.shutting_down()) {
    shell.clock().wait(look_interval_ms);
    show();
  }
  if (shell.shutting_down()) {
    progress->stop();
    if (result.wait_for(time_to_stop) != std::future_status::ready) {
      thread.detach();
      return false;
    }
  }
  thread.join();
  show();
  return result.get();
}
