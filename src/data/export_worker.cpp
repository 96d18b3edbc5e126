#include "data/export_worker.h"

#include <QString>

#include <chrono>
#include <future>
#include <thread>

#include "app/shell.h"
#include "base/clock.h"
#include "base/errors.h"
#include "data/export_progress.h"

namespace {

// How often the windows are shown how far the work is.
constexpr int look_interval_ms = 30;
// More than all the times that a connection to an office suite takes to give up and to end.
constexpr std::chrono::seconds time_to_stop(15);

// What is no error of the program's own (memory running out, above all) fails the export too.
void fail_alike(const std::function<void()>& work) {
  try {
    work();
  } catch (const RunTimeError&) {
    throw;
  } catch (const std::exception& error) {
    throw RunTimeError(error.what());
  }
}

}  // namespace

bool run_beside_the_windows(Shell& shell, std::function<void(ExportProgress&)> work) {
  const auto progress = std::make_shared<ExportProgress>();
  std::packaged_task<bool()> task([progress, work = std::move(work)] {
    return stop_at_first_failure([&] { fail_alike([&] { work(*progress); }); });
  });
  std::future<bool> result = task.get_future();
  std::thread thread(std::move(task));

  const auto show = [&] {
    for (const int percent : progress->take_reached()) {
      shell.set_progress(percent, QString::number(percent) + u'%');
    }
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
