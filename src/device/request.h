// The requests that a recorder understands, as values. docs/protocol.md has their bytes.
#pragma once

#include <QByteArray>

#include "device/pattern.h"
#include "device/texts.h"

struct Request {
  QByteArray bytes;       // byte 0 first on the line, the check byte last
  int answer_length = 0;  // bytes
};

// XOR of bytes 0..last.
std::uint8_t check_byte(const QByteArray& bytes, int last);

// Battery and present readings of a recorder with `channels` channels.
Request status_request(int channels);
// A block of stored readings, counted from the newest. Throws ConversionError above 255.
Request block_request(int block);
Request properties_request();
Request texts_request();
// The alarm limits of channel 1..4.
Request limits_request(int channel);

Request write_pattern_request(const PatternFrame& pattern);
Request write_texts_request(const DescriptionFrame& texts);
// `up` and `down` as encode_limit() gives them. Throws ConversionError for a word beyond 16 bits.
Request write_limits_request(int channel, int up, int down);
Request record_request(bool start);
