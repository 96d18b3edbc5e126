// Module Packet: the requests as the windows and command handlers make them, from the program's
// global state (User), and the exchange on the program's one link to a recorder.
// docs/protocol.md has the frames; only this folder reads the buffers.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

#include "device/recorder_link.h"

namespace Packet {

// The link that every exchange uses; it outlives the module's last use.
void attach(RecorderLink& link);
RecorderLink& recorder();

// The request to send, byte 0 first, and everything that was read for the last answer. After a
// successful exchange bytes 0..N-1 of ReceiveBuffer are the answer, N its expected length.
extern QByteArray SendBuffer;
extern QByteArray ReceiveBuffer;

// True while an exchange runs.
bool CommBusy();
// Trace of recent frames and its next slot: written only.
FrameLog& PacketLog();
std::int16_t& PacketCounter();

// XOR of SendBuffer bytes 0..n; the builders call it while the check byte itself is still 0.
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
// Alarm limits of channel 1..4, typed as texts in the channel's unit. Where a text is no number
// SendBuffer stays as it is and the result is 0. Throws ConversionError for a limit that does not
// fit 16 bits.
int BuildWriteLimits(int channel, const QString& up_limit, const QString& down_limit);
// 1 starts recording, 0 stops it.
int BuildCommand07(int start);

// Sends SendBuffer and waits for `expected_length` bytes: RecorderLink::exchange.
bool Exchange(int expected_length);

using Builder = std::function<int()>;
using Abandoned = std::function<bool()>;

// Builds and exchanges until an answer comes: RecorderLink::ask. No value without one. The answer's
// bytes are for the decoders of this folder (decode_properties() and its like).
std::optional<QByteArray> request(const Builder& build, const Retries& retries = {},
                                  const Abandoned& abandoned = {});

}  // namespace Packet
