// A recorder in software: takes what comes over the line and says what goes back, byte for byte as
// docs/protocol.md lays it down. It knows no port and no clock: whoever drives it hands in the time
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
// A request is never answered sooner: a recorder has to look at it first.
inline constexpr int turnaround_ms = 5;

// Alarm limits of one channel in its unit, sent as 8.8 fixed point.
struct Limits {
  double down = -40.0;
  double up = 85.0;
};

// What the recorder is and holds when it is attached.
struct Settings {
  int channels = max_channels;
  unsigned mask = 0x0F;  // bit c: channel c + 1 records, if it has it
  int readings = 0;      // in memory, all recording channels together
  int interval_s = 60;
  // The start that it reports; without one, that which makes the newest reading `elapsed_s` old.
  std::optional<QDateTime> start = {};
  int elapsed_s = 0;
  bool running = true;
  bool wrap = false;
  std::optional<int> delay_s = {};  // set: the start was delayed by so many seconds
  int all_data = Memory::capacity;
  QString title = QStringLiteral("Demo");
  QString description = QStringLiteral("Recorder in software");
  double battery_volts = 3.0;
  std::array<Limits, max_channels> limits = {};
  std::vector<Fault> faults = {};
  Signal signal = demo_signal;
};

// The recorder measures on all its channels at the end of every interval while it runs, and stores
// one reading for each channel of the mask. With its memory full it stops, or in wrap mode drops
// its oldest readings. "Start" goes on in the memory, written properties empty it. Block numbers
// count in the memory as it stood at the last properties answer, so that a download under way does
// not slide when a reading comes in.
class Recorder {
 public:
  Recorder(const Settings& settings, const QDateTime& now);

  // Takes bytes off the line and gives one answer for each request that they complete, in order.
  // Bytes that make no request with a correct check byte are dropped without an answer.
  std::vector<Answer> receive(const QByteArray& bytes, const QDateTime& now);

  // What it would report now.
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
