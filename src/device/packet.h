// Module Packet: builds requests from the program's global state (User) for the windows and command
// handlers, and exchanges them on the program's one link to a recorder. docs/protocol.md describes
// the frames. Only this folder reads the buffers.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

#include "device/recorder_link.h"

namespace Packet {

// Sets the link that every exchange uses. It must outlive the module's last use.
void attach(RecorderLink& link);
RecorderLink& recorder();

// The request to send, byte 0 first, and all bytes read for the last answer. After a successful
// exchange bytes 0..N-1 of ReceiveBuffer are the answer, where N is its expected length.
extern QByteArray SendBuffer;
extern QByteArray ReceiveBuffer;

// True while an exchange runs.
bool CommBusy();
// The trace of recent frames, and its next slot. The program only writes them.
FrameLog& PacketLog();
std::int16_t& PacketCounter();

// XOR of SendBuffer bytes 0..n: the check byte of a request whose last byte before it is n.
std::uint8_t CheckByte(int n);

// Each builder replaces SendBuffer by one request and returns the length of the answer to expect.

// Battery and present readings. Throws ConversionError when the recorder type in use has no usable
// channel count.
int BuildStatusRequest();
// Block of 128 stored readings, counted from the newest. Throws ConversionError above 255.
int BuildReadBlock(int block);
int BuildReadProperties();
int BuildReadDescription();
// Alarm limits of channel 1..4.
int BuildReadLimits(int channel);
// The first 14 bytes of User::PatternBytes.
int BuildWriteProperties();
// The first 64 bytes of User::DescriptionBytes.
int BuildWriteDescription();
// Alarm limits of channel 1..4, typed as texts in the channel's unit. If a text is not a number, it
// leaves SendBuffer unchanged and returns 0. Throws ConversionError for a limit that does not fit
// 16 bits.
int BuildWriteLimits(int channel, const QString& up_limit, const QString& down_limit);
// 1 starts recording, 0 stops it.
int BuildCommand07(int start);

// Sends SendBuffer and waits for `expected_length` bytes: RecorderLink::exchange.
bool Exchange(int expected_length);

using Builder = std::function<int()>;
using Abandoned = std::function<bool()>;

// Builds and exchanges until an answer comes (RecorderLink::ask); no value if none comes. Only the
// decoders of this folder, such as decode_properties(), look into the answer's bytes.
std::optional<QByteArray> request(const Builder& build, const Retries& retries = {},
                                  const Abandoned& abandoned = {});

}  // namespace Packet
