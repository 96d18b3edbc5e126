// A channel's alarm limits, as an answer reports them and a request sets them (docs/protocol.md).
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

// A typed limit as the word to send: in 1/256 of the channel's unit, ties to even, with 65536 added
// to a negative one. A limit that does not fit 16 bits gives a word outside 0..65535. Throws
// ConversionError for a text that is not a number or does not fit 32 bits.
int encode_limit(QStringView text);
