// A channel's alarm limits, in an answer and in the request that sets them (docs/protocol.md).
#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstdint>

// In the channel's unit.
struct ChannelLimits {
  double up = 0;
  double down = 0;
};

// Throws BoundsError for an answer of fewer than 7 bytes.
ChannelLimits decode_limits(const QByteArray& answer);

// A typed limit as the word that is sent: 1/256 of the channel's unit, rounded with ties to even, a
// negative one with 65536 added. What does not fit 16 bits stays too large or negative. Throws
// ConversionError for a text that is no number.
int encode_limit(QStringView text);
