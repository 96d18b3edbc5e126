// The line to one recorder: sends a request, waits for its answer and proves it. Knows no window.
// docs/protocol.md has the line's rules.
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
  // No answer says which request it is for. With this, the answers to earlier tries are awaited for
  // up to two seconds and dropped, so that none is taken for the next request's.
  bool await_late_answers = false;
};

class RecorderLink {
 public:
  // Both outlive the link.
  RecorderLink(SerialPort& port, Clock& clock);
  ~RecorderLink();
  RecorderLink(const RecorderLink&) = delete;
  RecorderLink& operator=(const RecorderLink&) = delete;

  // Sends the request and waits up to a second for its answer, byte 0 first and of exactly the
  // expected length; no value when there is none whose check byte is right. One extra byte in front
  // is tolerated. Other events run during the wait, so a second exchange can start inside the
  // first. Just before midnight the wait's deadline lies beyond the day's last second: once the
  // clock has wrapped only the bytes, or the end of the program, end the wait.
  std::optional<QByteArray> exchange(const Request& request);

  // Builds and exchanges until an answer comes or the tries are used up. `abandoned` is asked after
  // each try; when it says yes there is no value and no further try. A request that cannot be built
  // (RunTimeError) counts as a try without an answer.
  std::optional<QByteArray> ask(const std::function<Request()>& build, const Retries& retries = {},
                                const std::function<bool()>& abandoned = {});

  // An exchange is under way.
  bool busy() const { return busy_; }
  // Everything that was read for the last answer, right or wrong.
  const QByteArray& received() const { return received_; }

  // The clock that all waits for this recorder use.
  Clock& clock() { return clock_; }

  RecorderUse use;
  FrameLog log;

 private:
  // What one exchange got from the line, in bytes: found waiting before the request, and come
  // after.
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
  bool endless_wait_ = false;  // a wait lasts beyond its second
  QByteArray received_;
  qint64 taken_ = 0;  // bytes that were ever taken from the port
};
