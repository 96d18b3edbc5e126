#include "device/recorder_use.h"

#include <algorithm>

#include "base/clock.h"

namespace {

bool keeps_out(RecorderTask running, RecorderTask wanted) {
  return running != RecorderTask::poll || wanted == RecorderTask::poll;
}

}  // namespace

RecorderUse::RecorderUse(const Clock& clock) : clock_(clock) {
  overdue_.setSingleShot(true);
  overdue_.setInterval(longest_wait_ms + 1);
  connect(&overdue_, &QTimer::timeout, this, &RecorderUse::changed);
}

bool RecorderUse::outlasted(const Turn& turn) const {
  return turn.waiting_since_ && clock_.steady_ms() - *turn.waiting_since_ > longest_wait_ms;
}

bool RecorderUse::free_for(RecorderTask task) const {
  return std::none_of(turns_.begin(), turns_.end(), [&](const Turn* turn) {
    return keeps_out(turn->task_, task) && !outlasted(*turn);
  });
}

RecorderUse::Turn::Turn(RecorderUse& use, RecorderTask task)
    : use_(use), task_(task), granted_(use.free_for(task)) {
  if (!granted_) return;
  if (task != RecorderTask::poll) {
    for (Turn* turn : use_.turns_) {
      if (keeps_out(turn->task_, task)) turn->overtaken_ = true;
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
  if (!turn_) return;
  turn_->waiting_since_ = use_.clock_.steady_ms();
  use_.overdue_.start();
}

// A wait that was overdue keeps nobody out; from now on its task does again.
RecorderUse::Wait::~Wait() {
  if (!turn_) return;
  const bool was_overdue = use_.outlasted(*turn_);
  turn_->waiting_since_.reset();
  use_.overdue_.stop();
  if (was_overdue) Q_EMIT use_.changed();
}
