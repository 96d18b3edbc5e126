#include "acquire/downloaded_samples.h"
#include "acquire/segments.h"
#include "base/errors.h"
#include "base/times.h"
#include "support/runner.h"

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);

// The properties of a recording that began at 2026-02-28 23:59:50.
RecorderProperties properties(int flags, int readings, int interval, int delay = 0,
                              int elapsed = 0) {
  QByteArray answer = hex("020012") + static_cast<char>(flags) + hex("0f 1a021c173b32");
  for (const int word : {delay, interval - 1, 0, elapsed, readings}) {
    answer += static_cast<char>(word % 256);
    answer += static_cast<char>(word / 256);
  }
  return decode_properties(answer + '\0');
}

// Reading r of a block (0 is the newest) has the raw value 256 * r, which is r degrees.
QByteArray block(int data_length) {
  QByteArray answer(260, '\0');
  answer[1] = static_cast<char>(data_length / 256);
  answer[2] = static_cast<char>(data_length % 256);
  for (int r = 0; r < data_length / 2; ++r) answer[3 + 2 * r + 1] = static_cast<char>(r);
  return answer;
}

float value(const DownloadedSamples& samples, int n, int slot = 0) {
  return samples.values.at(static_cast<std::size_t>(n * Recording::channel_slots + slot));
}

}  // namespace

class TestSegments : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  // The rows expect: start, end, samples per channel, number of segments.
  void memory() {
    const auto mapped = [](int channels, const RecorderProperties& recorder) {
      const MemoryMap memory = map_memory(recorder, channels, now);
      return QStringLiteral("%1 %2 %3 %4")
          .arg(stamp_text(whole_second(memory.start)).mid(5), stamp_text(memory.end).mid(5))
          .arg(memory.samples_wanted)
          .arg(memory.segment_count);
    };
    // A delay counts only with its flag.
    QCOMPARE(mapped(1, properties(0x02, 128, 1, 20)), "02-28 23:59:50 03-01 00:01:58 128 1");
    QCOMPARE(mapped(1, properties(0x06, 128, 1, 20)), "03-01 00:00:10 03-01 00:02:18 128 1");
    // A wrapping memory is computed from its end, without the readings about to be erased.
    QCOMPARE(mapped(4, properties(0x42, 1000, 10, 0, 7)), "03-01 09:18:13 03-01 09:59:53 250 8");
    QCOMPARE(mapped(1, properties(0x40, 27500, 1)), "03-01 02:21:40 03-01 10:00:00 27500 215");
    QCOMPARE(mapped(1, properties(0x40, 27521, 1)), "03-01 02:29:51 03-01 10:00:00 27009 216");
    QCOMPARE(mapped(1, properties(0x40, 27501, 1)), "03-01 02:30:11 03-01 10:00:00 26989 215");
    // Three channels; and half a sample, which rounds to even.
    QCOMPARE(mapped(3, properties(0, 128, 3)), "02-28 23:59:50 03-01 00:01:58 43 1");
    QCOMPARE(mapped(2, properties(0, 129, 2)), "02-28 23:59:50 03-01 00:01:59 64 2");
    QVERIFY_THROWS_EXCEPTION(BoundsError, decode_properties(QByteArray(20, '\0')));
    const MemoryMap full = map_memory(properties(0, 65535, 1), 1, now);
    QCOMPARE(full.segment_count, 512);
    QCOMPARE(int(full.segments.size()), max_segments);
  }

  // First and last second of each segment, counted from the start.
  void segments() {
    const auto seconds = [](int channels, int readings) {
      const MemoryMap memory = map_memory(properties(0, readings, 10), channels, now);
      QList<qint64> result;
      for (const Segment& segment : memory.segments) {
        result << memory.start.secsTo(whole_second(segment.first))
               << memory.start.secsTo(whole_second(segment.last));
      }
      return result;
    };
    QCOMPARE(seconds(1, 200), QList<qint64>({0, 710, 720, 1990}));
    QCOMPARE(seconds(3, 256), QList<qint64>({0, 417, 427, 843}));
    QCOMPARE(seconds(3, 130), QList<qint64>({0, -3, 7, 423}));
    QCOMPARE(seconds(4, 129), QList<qint64>({0, -8, 2, 312}));    // half seconds: to even
    QCOMPARE(seconds(3, 250 * 128).at(2 * 249), 249 * 1280 / 3);  // no drift
    // Channels, first and last segment of eight, and how many samples they hold.
    for (const auto& [channels, first, last, samples] :
         {std::array{1, 0, 0, 104}, {4, 7, 7, 32}, {3, 3, 4, 85}, {3, 0, 5, 248}}) {
      QCOMPARE(samples_in(map_memory(properties(0, 1000, 1), channels, now), first, last), samples);
    }
  }

  // The first sample in time is the last in the block, with its channels in slot order.
  void blocks() {
    // Channels, bytes, samples wanted, position of the block, its first sample, samples stored and
    // counted. A short block behind a full one; a second block of three channels, which stores 42
    // samples; and blocks cut at either end.
    for (const auto& [channels, bytes, wanted, position, first, stored, counted] :
         {std::array{2, 144, 100, 1, 0, 36, 36},
          {3, 256, 128, 1, 43, 42, 43},
          {1, 256, 100, 0, -28, 128, 128},
          {1, 256, 30100, 0, 29972, 128, 128}}) {
      DownloadedSamples samples;
      add_block({block(bytes), channels}, {channels, 60, wanted, position, now}, samples);
      QCOMPARE(samples.count, counted);
      for (int n = 0; n < Recording::max_samples; ++n) {
        const int j = n - first;
        const bool there = j >= 0 && j < stored;
        QCOMPARE(samples.times.at(std::size_t(n)), there ? stamp_text(now.addSecs(60 * j)) : "");
        for (int slot = 0; there && slot < channels; ++slot) {
          QCOMPARE(value(samples, n, slot), float(bytes / 2 - channels * (j + 1) + slot));
        }
      }
    }
    DownloadedSamples samples;
    // A wrong length byte does no harm.
    for (const int length : {1, 255}) {
      add_block({block(length), 4}, {4, 1, 31, 0, now}, samples);
      add_block({block(length).left(20), 1}, {1, 1, 0, 1, now}, samples);
    }
    QVERIFY_THROWS_EXCEPTION(BoundsError, StoredBlock("1", 1));
    // The raw value 0x8000 is 128.0, not -128: only greater ones are negative.
    for (const auto& [raw, reading] :
         {std::pair("8001", 1.5F), {"0080", 128.0F}, {"0180", -128.0F}, {"e0ff", -0.13F}}) {
      add_block({block(2).replace(3, 2, hex(raw)), 1}, {1, 1, 1, 0, now}, samples);
      QCOMPARE(value(samples, 0), reading);
    }
  }
};

const int registered = register_test<TestSegments>();

#include "test_segments.moc"
