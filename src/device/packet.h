// Module Packet: the recorder's requests and the exchange that sends one and takes its answer.
// The frames are laid out in docs/protocol.md. Only windows and command handlers call it.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>

class Clock;
class MessageBox;
class SerialPort;

namespace Packet {

// The port and the clock that every exchange uses; both must outlive the module's last use.
void attach(SerialPort& port, Clock& clock);

// The request to send, byte 0 first, and everything that was read for the last answer. After a
// successful exchange bytes 0..N-1 of ReceiveBuffer are the answer, N its expected length.
extern QByteArray SendBuffer;
extern QByteArray ReceiveBuffer;

// True while an exchange runs.
extern bool CommBusy;

// Trace of recent frames, for a debugger: written only. Slots 254 and 255 stay unused.
inline constexpr int log_slots = 256;
inline constexpr int log_slot_size = 261;
extern std::array<std::array<std::uint8_t, log_slot_size>, log_slots> PacketLog;
extern std::int16_t PacketCounter;

// XOR of SendBuffer bytes 0..n; called while the check byte itself is still 0.
std::uint8_t CheckByte(int n);

// Each builder replaces SendBuffer by one request and returns the length of the answer to expect.

// Battery and present readings; the answer holds two bytes a channel of the recorder type in use.
// Throws ConversionError when the type has no usable channel count.
int BuildStatusRequest();
// Block of 128 stored readings, counted from the newest. Throws ConversionError above 255.
int BuildReadBlock(int block);
int BuildReadProperties();
int BuildReadDescription();
// Alarm limits of channel 1..4.
int BuildReadLimits(int channel);
// The first 14 bytes of User::PatternBytes; the recorder expects 15 as their count.
int BuildWriteProperties();
// The first 64 bytes of User::DescriptionBytes.
int BuildWriteDescription();
// Alarm limits of channel 1..4, typed as texts in the channel's unit. A text that is not a number
// is told to the user; then SendBuffer stays as it is and the result is 0. Throws ConversionError
// for a limit that does not fit 16 bits.
int BuildWriteLimits(int channel, const QString& up_limit, const QString& down_limit,
                     MessageBox& messages);
// 1 starts recording, 0 stops it.
int BuildCommand07(int start);

// Sends SendBuffer and waits up to a second for `expected_length` bytes. True when a complete
// answer with a right check byte stands in ReceiveBuffer; one extra byte in front is tolerated.
// Other events run during the wait, so a second exchange can start inside the first.
bool Exchange(int expected_length);

// How often a request is tried, and the pauses between the tries in milliseconds.
struct Retries {
  int tries = 3;
  int pause = 50;
  bool pause_after_last = false;
  bool await_late_answers = true;
};

// Builds and exchanges until an answer comes or the tries are used up. `abandoned` is asked after
// each try; when it says yes the result is false without a further try. An answer does not say
// which request it is for: after an answer to a later try, those that earlier tries still miss are
// awaited for up to two seconds and dropped, so that none is taken for the next request's.
bool request(const std::function<int()>& build, const Retries& retries = {},
             const std::function<bool()>& abandoned = {});

}  // namespace Packet
