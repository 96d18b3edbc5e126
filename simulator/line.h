// The line back from the recorder: when each byte of its answers arrives.
#pragma once

#include <QByteArray>

#include <deque>
#include <optional>
#include <vector>

#include "simulator/fault.h"

namespace simulator {

// Time on a 9600 baud line with 11 bits a byte (start, 8 data, parity, stop), in microseconds.
constexpr qint64 line_time_us(qint64 bytes) {
  return bytes * 11'000'000 / 9600;
}

// Moments are microseconds of any clock that never goes back. A paced line lets the request pass
// first and then delivers the bytes one by one at 9600 baud, counted from the start of each answer
// so that no error adds up. An unpaced line delivers an answer as a whole.
class Line {
 public:
  explicit Line(bool paced = true) : paced_(paced) {}

  // An answer that begins while another is on the line follows it.
  void send(const Answer& answer, qint64 now_us);

  struct Arrival {
    QByteArray bytes;
    std::vector<Answer> ended;  // answers whose last byte is among them
    bool unplugged = false;     // nothing comes after these bytes
  };
  // Returns what has arrived by now and was not taken before.
  Arrival take(qint64 now_us);

  // When to call take() next; no value while the line is idle. It is the time of the next byte or,
  // if later, `not_before`, so that several bytes can be taken together. It is never later than the
  // end of an answer, because the other side waits for that.
  std::optional<qint64> next_due(qint64 not_before = 0) const;
  void clear() { pending_.clear(); }

 private:
  struct Pending {
    Answer answer;
    qint64 start;
    qint64 taken = 0;
  };
  qint64 begin_of(const Pending& pending) const { return std::max(pending.start, free_at_); }
  qint64 duration(qint64 bytes) const { return paced_ ? line_time_us(bytes) : 0; }

  bool paced_;
  qint64 free_at_ = 0;
  std::deque<Pending> pending_;  // by start
};

}  // namespace simulator
