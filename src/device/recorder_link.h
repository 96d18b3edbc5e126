// The line to one recorder: sends a request, waits for its answer and checks it. Knows no window.
// docs/protocol.md describes the rules of the line.
#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "device/recorder_use.h"
#include "device/request.h"

class Clock;
class SerialPort;

// Trace of the newest frames, sent and received, for a debugger. Slots 254 and 255 stay unused.
struct FrameLog {
  static constexpr int slots = 256;
  static constexpr int slot_size = 261;

  std::array<std::array<std::uint8_t, slot_size>, slots> frames{};
  std::int16_t counter = 0;  // the next slot

  // A frame shorter than the slot leaves the slot's other bytes as they were.
  void add(const QByteArray& frame);
};

// How often a request is tried, and the pauses between the tries.
struct Retries {
  int tries = 3;
  int pause_ms = 50;
  bool pause_after_last = false;
  // No answer says which request it is for. If true, the link waits up to two seconds for answers
  // to earlier tries and drops them, so that none is taken for the next request's.
  bool await_late_answers = false;
};

class RecorderLink {
 public:
  // Both must outlive the link.
  RecorderLink(SerialPort& port, Clock& clock);
  ~RecorderLink();
  RecorderLink(const RecorderLink&) = delete;
  RecorderLink& operator=(const RecorderLink&) = delete;

  // Sends the request and waits up to a second for its answer. Returns exactly the expected number
  // of bytes, byte 0 first, or no value if no answer with a correct check byte comes. Tolerates one
  // extra byte in front. Other events run during the wait, so a second exchange can start inside
  // the first. Just before midnight the deadline lies beyond the day's last second; once the clock
  // has wrapped, only the bytes or the end of the program end the wait.
  std::optional<QByteArray> exchange(const Request& request);

  // Builds and exchanges until an answer comes or the tries are used up. Calls `abandoned` after
  // each try without an answer; if it returns true, there is no value and no further try. A request
  // that cannot be built (RunTimeError) counts as a try without an answer.
  std::optional<QByteArray> ask(const std::function<Request()>& build, const Retries& retries = {},
                                const std::function<bool()>& abandoned = {});

  // Whether an exchange is under way.
  bool busy() const { return busy_; }
  // Everything that was read for the last answer, right or wrong.
  const QByteArray& received() const { return received_; }

  // The clock that all waits for this recorder use.
  Clock& clock() { return clock_; }

  RecorderUse use;
  FrameLog log;

 private:
  // What one exchange received, in bytes: `stale` ones that waited before the request, and those
  // that arrived after it.
  struct Outcome {
    bool answered = false;
    qint64 stale = 0;
    qint64 arrived = 0;
  };
  Outcome try_once(const Request& request);
  qint64 send(const QByteArray& bytes);
  qint64 drop_waiting_bytes();
  void await(int expected_length);
  bool accept_answer(int expected_length);
  void discard_late_answers(qint64 bytes);
  QByteArray read_waiting();

  SerialPort& port_;
  Clock& clock_;
  bool busy_ = false;
  bool endless_wait_ = false;  // a wait has lasted longer than its second
  QByteArray received_;
  qint64 taken_ = 0;  // all bytes ever read from the port
};
