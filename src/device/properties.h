// The answer to a properties request: what the recorder is set to and what it holds.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <array>

enum class StartupType { start_up = 0, delayed = 1, stop = 2 };

struct RecorderProperties {
  bool recording = false;
  // "Stop!" unless the recorder is recording.
  StartupType startup_type = StartupType::stop;
  // The recording began after the startup delay. A recorder that has stopped reports it too.
  bool delayed = false;
  bool wrap = false;
  // Which of channels 1..4 take part in recording.
  std::array<bool, 4> channels{};
  // The recorder's start time: as it is shown, without leading zeros and with two blanks after the
  // date, and as a wall time, in which parts outside their range carry over.
  QString start_text;
  QDateTime start;
  int startup_delay = 0;    // seconds
  int record_interval = 1;  // seconds, 1..65536
  int all_data = 0;         // samples of the pattern
  int idle_seconds = 0;     // since the last reading; valid while the recorder wraps
  int readings_held = 0;    // in the recorder's memory, all channels together
};

// Decodes an answer of at least 21 bytes, byte 0 first (docs/protocol.md). Throws BoundsError for a
// shorter one.
RecorderProperties decode_properties(const QByteArray& answer);
