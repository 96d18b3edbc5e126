#include "device/status.h"

#include <algorithm>

#include "device/answer_bytes.h"

namespace {

constexpr int battery_at = 3;
constexpr int readings_at = 5;
// The bytes of a status answer that are not readings.
constexpr int frame_bytes = 6;

}  // namespace

RecorderStatus decode_status(const QByteArray& answer) {
  RecorderStatus status;
  status.battery_volts = word_at(answer, battery_at) / 4096.0 * 4.0;
  const auto channels = std::clamp<qsizetype>((answer.size() - frame_bytes) / 2, 0, 4);
  for (qsizetype c = 0; c < channels; ++c) {
    status.readings[static_cast<std::size_t>(c)] =
        static_cast<float>(value_at(answer, readings_at + 2 * c));
  }
  return status;
}
