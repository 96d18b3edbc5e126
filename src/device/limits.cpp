#include "device/limits.h"

#include "base/numbers.h"
#include "device/answer_bytes.h"

ChannelLimits decode_limits(const QByteArray& answer) {
  return {.up = value_at(answer, 5), .down = value_at(answer, 3)};
}

int encode_limit(QStringView text) {
  const std::int32_t raw = to_int32(to_double(text) * 256.0);
  return raw < 0 ? raw + 65536 : raw;
}
