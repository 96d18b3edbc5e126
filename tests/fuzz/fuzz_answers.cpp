// Every kind of answer from the line, of any length and content.
#include "acquire/downloaded_samples.h"
#include "acquire/segments.h"
#include "device/limits.h"
#include "device/status.h"
#include "device/texts.h"
#include "fuzz/fuzz.h"

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);

void properties(const QByteArray& answer, int channels) {
  const RecorderProperties decoded = decode_properties(answer);
  require(decoded.record_interval >= 1 && decoded.record_interval <= 65536);
  const MemoryMap map = map_memory(decoded, channels, now);
  require(map.segments.size() <= max_segments && map.interval >= 1);
  // A memory with less than one sample per channel ends one interval before it begins.
  for (const Segment& segment : map.segments) {
    require(segment.first.isValid() && segment.last.isValid() &&
            segment.first <= segment.last.addSecs(map.interval));
  }
  const int last = static_cast<int>(map.segments.size()) - 1;
  if (last >= 0) require(samples_in(map, 0, last) >= 0);
}

void texts(const QByteArray& answer) {
  const RecorderTexts decoded = decode_texts(answer);
  require(text_of_units(decoded.title.data(), 16).size() <= 8);
  require(text_of_units(decoded.description.data(), 48).size() <= 24);
}

void block(const QByteArray& answer, int channels, int position) {
  static DownloadedSamples samples;
  samples.count = 0;
  add_block({answer, channels}, {channels, 60, position * 200, position, now}, samples);
  require(samples.count >= 0 && samples.count <= 128);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const int kind = data[0];
  const int channels = 1 + kind / 8 % 4;
  const int position = data[1];
  const QByteArray answer(reinterpret_cast<const char*>(data) + 2,
                          static_cast<qsizetype>(size) - 2);
  holds([&] {
    switch (kind % 8) {
      case 0:
        return properties(answer, channels);
      case 1:
        return texts(answer);
      case 2:
        return block(answer, channels, position);
      case 3: {
        const ChannelLimits limits = decode_limits(answer);
        return require(limits.up <= 128 && limits.down > -128);
      }
      default:
        return require(decode_status(answer).battery_volts >= 0);
    }
  });
  return 0;
}
