#include "device/recorder_link.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

#include "base/clock.h"
#include "base/errors.h"
#include "base/serial_port.h"
#include "device/answer_bytes.h"

namespace {

// The recorder's address. No other address exists.
constexpr char address = 0x00;
constexpr int answer_time_ms = 1000;
constexpr int late_answer_ms = 2000;
constexpr int pause_ms = 10;
constexpr int busy_pause_ms = 100;
constexpr int shortest_answer = 4;
// More than a driver holds back. The limit keeps a line that never stops from blocking the program.
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

QByteArray RecorderLink::read_waiting() {
  QByteArray bytes = port_.read_all();
  taken_ += bytes.size();
  return bytes;
}

// Bytes that wait before the request are left over from an earlier one, or noise. They are dropped
// before the request goes out, so that even an immediate answer is kept. Returns their number.
qint64 RecorderLink::send(const QByteArray& bytes) {
  port_.set_settings(QStringLiteral("9600,M,8,1"));
  port_.write(QByteArray(1, address));
  clock_.sleep(pause_ms);
  port_.set_settings(QStringLiteral("9600,S,8,1"));
  const qint64 stale = drop_waiting_bytes();
  port_.write(bytes);
  return stale;
}

// Reads in a loop, because each read returns only a part of what the driver holds.
qint64 RecorderLink::drop_waiting_bytes() {
  qint64 dropped = 0;
  while (port_.bytes_waiting() > 0 && dropped < most_stale_bytes) {
    received_ = read_waiting();
    dropped += received_.size();
  }
  return dropped;
}

// Bytes that an exchange inside this wait reads count too, so they end a wait that lasts beyond
// midnight. Only the outermost wait lasts that long. One inside it ends by the steady clock, so
// that waits do not pile up while a recorder stays silent for days.
void RecorderLink::await(int expected_length) {
  const RecorderUse::Wait waiting(use);
  const qint64 taken_before = taken_;
  const qint64 began = clock_.steady_ms();
  const float deadline =
      clock_.seconds_since_midnight() + static_cast<float>(answer_time_ms) / 1000.0F;
  const bool inside_endless_wait = endless_wait_;
  const QScopedValueRollback endless(endless_wait_);
  while (!clock_.stopped() && port_.bytes_waiting() + taken_ - taken_before < expected_length) {
    const float left = deadline - clock_.seconds_since_midnight();
    if (left <= 0) return;
    if (clock_.steady_ms() - began >= answer_time_ms) {
      if (inside_endless_wait) return;
      endless_wait_ = true;
    }
    clock_.wait(std::min(answer_time_ms, static_cast<int>(std::ceil(left * 1000.0F))));
    use.notice_long_wait();
  }
}

// Reads what has arrived into received_ unless it is too short. Returns whether it is the answer.
bool RecorderLink::accept_answer(int expected_length) {
  clock_.sleep(pause_ms);
  const int count = port_.bytes_waiting();
  if (count < shortest_answer) return false;
  received_ = read_waiting();
  // The check over a partial answer would pass once in 256 times, and the readings would be wrong.
  if (received_.size() < expected_length) return false;
  if (answer_check(received_, expected_length) == 0) return true;
  if (count != expected_length + 1) return false;
  // One extra byte in front. The rest is accepted without a second check, because an answer behind
  // a start-up glitch of the line is worth more than a repeated request.
  received_.remove(0, 1);
  return true;
}

RecorderLink::Outcome RecorderLink::try_once(const Request& request) {
  if (busy_) clock_.sleep(busy_pause_ms);
  busy_ = true;
  log.add(request.bytes);
  Outcome outcome;
  stop_at_first_failure([&] {
    outcome.stale = send(request.bytes);
    skip_on_error([&] { await(request.answer_length); });
    const qint64 taken_before = taken_;
    skip_on_error([&] { outcome.answered = accept_answer(request.answer_length); });
    outcome.arrived = taken_ - taken_before;
    log.add(received_);
  });
  busy_ = false;
  return outcome;
}

std::optional<QByteArray> RecorderLink::exchange(const Request& request) {
  if (!try_once(request).answered) return std::nullopt;
  return received_.left(request.answer_length);
}

// Waits for the `bytes` that earlier tries still miss, for up to two seconds of the steady clock,
// and drops them, so that none is taken for the next block's.
void RecorderLink::discard_late_answers(qint64 bytes) {
  const RecorderUse::Wait waiting(use);
  const qint64 began = clock_.steady_ms();
  skip_on_error([&] {
    while (!clock_.stopped() && port_.bytes_waiting() < bytes) {
      const qint64 left = late_answer_ms - (clock_.steady_ms() - began);
      if (left <= 0) break;
      clock_.wait(static_cast<int>(left));
    }
    read_waiting();
  });
}

std::optional<QByteArray> RecorderLink::ask(const std::function<Request()>& build,
                                            const Retries& retries,
                                            const std::function<bool()>& abandoned) {
  qint64 owed = 0;  // bytes of answers to the tries so far that have not arrived
  for (int attempt = 1; attempt <= retries.tries; ++attempt) {
    Outcome outcome;
    Request request;
    stop_at_first_failure([&] {
      request = build();
      outcome = try_once(request);
    });
    // Before the first try no answer is owed, so the bytes that it finds waiting are noise.
    if (attempt > 1) owed = std::max<qint64>(0, owed - outcome.stale);
    if (outcome.answered) {
      const QByteArray answer = received_.left(request.answer_length);
      owed -= outcome.arrived - request.answer_length;
      if (owed > 0 && retries.await_late_answers) discard_late_answers(owed);
      return answer;
    }
    owed += std::max<qint64>(0, request.answer_length - outcome.arrived);
    if (clock_.stopped() || (abandoned && abandoned())) return std::nullopt;
    if (attempt < retries.tries || retries.pause_after_last) clock_.sleep(retries.pause_ms);
  }
  return std::nullopt;
}
