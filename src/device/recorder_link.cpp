#include "device/recorder_link.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

#include "base/clock.h"
#include "base/errors.h"
#include "base/serial_port.h"
#include "device/answer_bytes.h"

namespace {

// The recorder's address; there is no other.
constexpr char address = 0x00;
constexpr int answer_time_ms = 1000;
constexpr int late_answer_ms = 2000;
constexpr int pause_ms = 10;
constexpr int busy_pause_ms = 100;
constexpr int shortest_answer = 4;
// More than what a driver holds back; a line that never stops must not stop the program.
constexpr qint64 most_stale_bytes = 64 * 1024;

std::uint8_t answer_check(const QByteArray& answer, int length) {
  std::uint8_t check = 0;
  for (int i = 1; i < length; ++i) check ^= byte_at(answer, i);
  return check;
}

}  // namespace

void FrameLog::add(const QByteArray& frame) {
  constexpr int last_slot = 254;
  if (counter >= last_slot) counter = 0;
  const auto length = std::min<qsizetype>(frame.size(), slot_size);
  std::copy_n(frame.begin(), length, frames[static_cast<std::size_t>(counter)].begin());
  ++counter;
}

RecorderLink::RecorderLink(SerialPort& port, Clock& clock)
    : use(clock), port_(port), clock_(clock) {
  port_.on_activity = [this] { clock_.wake(); };
}

RecorderLink::~RecorderLink() {
  port_.on_activity = {};
}

// What waits now is left over from an earlier request, or noise. It is dropped before the request
// goes out, so that even an answer without any delay is not taken for it.
void RecorderLink::send(const QByteArray& bytes) {
  port_.set_settings(QStringLiteral("9600,M,8,1"));
  port_.write(QByteArray(1, address));
  clock_.sleep(pause_ms);
  port_.set_settings(QStringLiteral("9600,S,8,1"));
  drop_waiting_bytes();
  port_.write(bytes);
}

// The port gives out a part at a time of what the driver holds.
void RecorderLink::drop_waiting_bytes() {
  const qint64 before = taken_;
  while (port_.bytes_waiting() > 0 && taken_ - before < most_stale_bytes) {
    received_ = port_.read_all();
    taken_ += received_.size();
  }
  dropped_ = taken_ - before;
}

// Bytes that an exchange inside this wait takes count as well: they end a wait that lasts beyond
// midnight. Only the outermost such wait lasts; one inside it ends by the steady clock, so that a
// recorder that stays silent for days does not pile up waits.
void RecorderLink::await(int expected_length) {
  const qint64 taken_before = taken_;
  const qint64 began = clock_.steady_ms();
  const float deadline =
      clock_.seconds_since_midnight() + static_cast<float>(answer_time_ms) / 1000.0F;
  QScopedValueRollback waits(open_ended_waits_);
  bool open_ended = false;
  while (!clock_.stopped() && port_.bytes_waiting() + taken_ - taken_before < expected_length) {
    const float left = deadline - clock_.seconds_since_midnight();
    if (left <= 0) return;
    if (clock_.steady_ms() - began >= answer_time_ms && !open_ended) {
      if (open_ended_waits_ > 0) return;
      open_ended = true;
      ++open_ended_waits_;
    }
    clock_.wait(std::min(answer_time_ms, static_cast<int>(std::ceil(left * 1000.0F))));
  }
}

// Takes what has arrived into received_ and says whether it is the answer.
bool RecorderLink::accept_answer(int expected_length) {
  clock_.sleep(pause_ms);
  const int count = port_.bytes_waiting();
  if (count < shortest_answer) return false;
  received_ = port_.read_all();
  taken_ += received_.size();
  // A check over a part of an answer would pass once in 256 times, and readings would be wrong.
  if (received_.size() < expected_length) return false;
  if (answer_check(received_, expected_length) == 0) return true;
  if (count != expected_length + 1) return false;
  // One extra byte in front. It is taken on trust, without a second check: an answer that a
  // line's start-up glitch has pushed along is worth more than a repeated request.
  received_.remove(0, 1);
  return true;
}

std::optional<QByteArray> RecorderLink::exchange(const Request& request) {
  if (busy_) clock_.sleep(busy_pause_ms);
  busy_ = true;
  log.add(request.bytes);
  bool answered = false;
  stop_at_first_failure([&] {
    send(request.bytes);
    skip_on_error([&] { await(request.answer_length); });
    skip_on_error([&] { answered = accept_answer(request.answer_length); });
    log.add(received_);
  });
  busy_ = false;
  if (!answered) return std::nullopt;
  return received_.left(request.answer_length);
}

// Waits until `bytes` have come that earlier tries still miss, for up to two seconds by the steady
// clock, and drops them, so that none is taken for the next block's.
void RecorderLink::discard_late_answers(qint64 bytes) {
  const RecorderUse::Wait waiting(use);
  const qint64 began = clock_.steady_ms();
  skip_on_error([&] {
    while (!clock_.stopped() && port_.bytes_waiting() < bytes) {
      const qint64 left = late_answer_ms - (clock_.steady_ms() - began);
      if (left <= 0) break;
      clock_.wait(static_cast<int>(left));
    }
    taken_ += port_.read_all().size();
  });
}

std::optional<QByteArray> RecorderLink::ask(const std::function<Request()>& build,
                                            const Retries& retries,
                                            const std::function<bool()>& abandoned) {
  const RecorderUse::Wait waiting(use);
  qint64 owed = 0;  // bytes that the tries have asked for and that have not come
  for (int attempt = 1; attempt <= retries.tries; ++attempt) {
    std::optional<QByteArray> answer;
    const qint64 taken_before = taken_;
    dropped_ = 0;
    stop_at_first_failure([&] {
      const Request request = build();
      owed += request.answer_length;
      answer = exchange(request);
    });
    // What the first try finds waiting is no answer to any of the tries.
    const qint64 foreign = attempt == 1 ? dropped_ : 0;
    owed = std::max<qint64>(0, owed - (taken_ - taken_before - foreign));
    if (answer) {
      if (owed > 0 && retries.await_late_answers) discard_late_answers(owed);
      return answer;
    }
    if (clock_.stopped() || (abandoned && abandoned())) return std::nullopt;
    if (attempt < retries.tries || retries.pause_after_last) clock_.sleep(retries.pause_ms);
  }
  return std::nullopt;
}
