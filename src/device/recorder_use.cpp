#include "device/recorder_use.h"

#include <algorithm>
#include <utility>

#include "base/clock.h"

namespace {

bool keeps_out(RecorderTask running, RecorderTask wanted) {
  return running != RecorderTask::poll || wanted == RecorderTask::poll;
}

}  // namespace

RecorderUse::RecorderUse(const Clock& clock) : clock_(clock) {}

bool RecorderUse::outlasted(const Turn& turn) const {
  return turn.waiting_since_ && clock_.steady_ms() - *turn.waiting_since_ > longest_wait_ms;
}

bool RecorderUse::free_for(RecorderTask task) const {
  return std::none_of(turns_.begin(), turns_.end(), [&](const Turn* turn) {
    const bool has_time = task == RecorderTask::refresh;
    return keeps_out(turn->task_, task) && !turn->overtaken() && (has_time || !outlasted(*turn));
  });
}

void RecorderUse::notice_long_wait() {
  const bool long_wait = std::any_of(turns_.begin(), turns_.end(),
                                     [this](const Turn* turn) { return outlasted(*turn); });
  if (std::exchange(long_wait_, long_wait) != long_wait) Q_EMIT changed();
}

RecorderUse::Turn::Turn(RecorderUse& use, RecorderTask task)
    : use_(use), task_(task), granted_(use.free_for(task)) {
  if (!granted_) return;
  if (task != RecorderTask::poll) {
    for (Turn* turn : use_.turns_) {
      if (keeps_out(turn->task_, task) && !turn->overtaken()) turn->overtaken_by_ = task;
    }
  }
  use_.turns_.push_back(this);
  if (task_ != RecorderTask::poll) Q_EMIT use_.changed();
}

RecorderUse::Turn::~Turn() {
  if (!granted_) return;
  std::erase(use_.turns_, this);
  if (task_ != RecorderTask::poll) Q_EMIT use_.changed();
}

RecorderUse::Wait::Wait(RecorderUse& use)
    : use_(use), turn_(use.turns_.empty() ? nullptr : use.turns_.back()) {
  if (turn_) turn_->waiting_since_ = use_.clock_.steady_ms();
}

// A task whose long wait ends keeps others out again.
RecorderUse::Wait::~Wait() {
  if (!turn_) return;
  turn_->waiting_since_.reset();
  use_.notice_long_wait();
}
