// What the recorder's answers say of its properties, texts, battery and limits. The answers' bytes
// are laid out in docs/protocol.md; every function takes a complete answer, byte 0 first, and
// throws BoundsError for a shorter one.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

enum class StartupType { start_up = 0, delayed = 1, stop = 2 };

struct RecorderProperties {
  bool recording = false;
  StartupType startup_type = StartupType::stop;
  bool wrap = false;
  // Channel 1..4 takes part in recording.
  std::array<bool, 4> channels{};
  // The recorder's start time as it is shown: no leading zeros, two blanks after the date.
  QString start_time;
  int startup_delay = 0;    // seconds
  int record_interval = 1;  // seconds, 1..65536
  int all_data = 0;         // samples of the pattern
  int readings_held = 0;    // in the recorder's memory, all channels together
};

RecorderProperties decode_properties(const QByteArray& answer);

struct RecorderTexts {
  std::array<std::uint8_t, 16> title{};
  std::array<std::uint8_t, 48> description{};
};

RecorderTexts decode_texts(const QByteArray& answer);

// The text that UTF-16LE bytes are, up to the first zero unit; half a surrogate pair at the end of
// a field becomes the replacement character.
QString text_of_units(const std::uint8_t* bytes, int count);

// Battery voltage in volts from a status answer, and the least that is "Ok".
double battery_voltage(const QByteArray& answer);
inline constexpr double least_voltage = 2.5;

struct ChannelLimits {
  double up = 0;
  double down = 0;
};

ChannelLimits decode_limits(const QByteArray& answer);
