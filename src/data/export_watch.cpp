#include "data/export_watch.h"

#include "data/automation.h"

namespace {

constexpr qint64 quiet_limit_ms = 10'000;
constexpr std::int64_t processor_limit_ms = 60'000;

}  // namespace

bool ExportWatch::stuck() {
  const auto activity = office_.activity();
  if (!activity) {
    quiet_.start();
    return false;
  }
  if (activity->answers != answers_ || activity->processor_ms != processor_ms_) quiet_.start();
  if (activity->answers != answers_) processor_ms_at_answer_ = activity->processor_ms;
  answers_ = activity->answers;
  processor_ms_ = activity->processor_ms;
  return quiet_.hasExpired(quiet_limit_ms) ||
         processor_ms_ - processor_ms_at_answer_ > processor_limit_ms;
}
