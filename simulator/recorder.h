// A recorder in software: takes the bytes that come over the line and returns those that go back,
// as docs/protocol.md describes them. It knows no port and no clock: the caller passes the time
// (local wall time without a zone), so that a test needs no real time.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <array>
#include <optional>
#include <vector>

#include "simulator/fault.h"
#include "simulator/memory.h"
#include "simulator/request_reader.h"
#include "simulator/signal.h"

namespace simulator {

inline constexpr int max_channels = 4;
// Milliseconds before an answer begins, because a recorder has to look at the request first.
inline constexpr int turnaround_ms = 5;

// Alarm limits of one channel in its unit, sent as 8.8 fixed point.
struct Limits {
  double down = -40.0;
  double up = 85.0;
};

// The recorder's properties and contents when it is attached.
struct Settings {
  int channels = max_channels;
  unsigned mask = 0x0F;  // bit c: channel c + 1 records, if it exists
  int readings = 0;      // in memory, all recording channels together
  int interval_s = 60;
  // The start that it reports. By default, the one that makes the newest reading `elapsed_s` old.
  std::optional<QDateTime> start = {};
  int elapsed_s = 0;
  bool running = true;
  bool wrap = false;
  std::optional<int> delay_s = {};  // if set, the delay of the start
  int all_data = Memory::capacity;
  QString title = QStringLiteral("Demo");
  QString description = QStringLiteral("Recorder in software");
  double battery_volts = 3.0;
  std::array<Limits, max_channels> limits = {};
  std::vector<Fault> faults = {};
  Signal signal = demo_signal;
};

// While the recorder runs, it measures on all its channels at the end of every interval and stores
// one reading for each channel of the mask. When its memory is full, it stops or, in wrap mode,
// drops its oldest readings. "Start" keeps the memory; written properties empty it. Block numbers
// refer to the memory as it was at the last properties answer, so that blocks do not shift when a
// reading comes in during a download.
class Recorder {
 public:
  Recorder(const Settings& settings, const QDateTime& now);

  // Takes bytes off the line and returns one answer for each request that they complete, in order.
  // The answer to an unknown request, or to one with a wrong check byte, has no bytes.
  std::vector<Answer> receive(const QByteArray& bytes, const QDateTime& now);

  // What the recorder would report now.
  bool running(const QDateTime& now);
  int readings(const QDateTime& now);
  // The raw live value of channel 0..3: the signal, one step a second.
  std::uint16_t live(int channel, const QDateTime& now) const;

 private:
  void measure_until(const QDateTime& now);
  void start(const QDateTime& now, int delay_s);
  int interval_s() const;

  void obey(Answer& answer, const QDateTime& now);
  std::optional<QByteArray> answer_data(const QByteArray& request, const QDateTime& now);
  QByteArray status(const QDateTime& now) const;
  QByteArray properties(const QDateTime& now);
  void write_properties(const QByteArray& pattern, const QDateTime& now);

  int channels_;
  int battery_;
  Signal signal_;
  QByteArray pattern_;                           // the 14 bytes of docs/protocol.md, as written
  QByteArray texts_;                             // 16 bytes title, 48 bytes description
  std::array<QByteArray, max_channels> limits_;  // down and up limit, low byte first

  bool running_ = false;
  QDateTime next_reading_;
  QDateTime last_reading_;
  Memory memory_;
  std::optional<Memory> reported_;

  RequestReader reader_;
  Faults faults_;
};

}  // namespace simulator
