#include <QTest>

#include "acquire/segments.h"
#include "app/errors.h"
#include "app/times.h"
#include "support/runner.h"

class TestSegments : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void memory_data();
  void memory();
  void segment_times_data();
  void segment_times();
  void chosen_samples_data();
  void chosen_samples();
  void three_channels_drift_no_second();
  void kept_segments_are_bounded();
};

namespace {

const QDateTime now(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);

QByteArray properties(int flags, int readings, int interval, int delay = 0, int elapsed = 0) {
  QByteArray answer(22, '\0');
  const auto put = [&](int at, int value) {
    answer[at] = static_cast<char>(value % 256);
    answer[at + 1] = static_cast<char>(value / 256);
  };
  answer[3] = static_cast<char>(flags);
  const char start[] = {26, 2, 28, 23, 59, 50};  // 2026-02-28 23:59:50
  answer.replace(5, 6, start, 6);
  put(11, delay);
  put(13, interval - 1);
  put(17, elapsed);
  put(19, readings);
  return answer;
}

}  // namespace

void TestSegments::memory_data() {
  QTest::addColumn<QByteArray>("answer");
  QTest::addColumn<int>("channels");
  QTest::addColumn<QString>("start");
  QTest::addColumn<QString>("end");
  QTest::addColumn<int>("samples");
  QTest::addColumn<int>("segments");
  const auto row = [](const char* name, const QByteArray& answer, int channels, const char* start,
                      const char* end, int samples, int segments) {
    QTest::newRow(name) << answer << channels << start << end << samples << segments;
  };
  row("one channel", properties(0x02, 200, 60), 1, "2026-02-28 23:59:50", "2026-03-01 03:19:50",
      200, 2);
  row("one second", properties(0, 256, 1), 2, "2026-02-28 23:59:50", "2026-03-01 00:01:58", 128, 2);
  row("delay counts only with its flag", properties(0x02, 128, 1, 20), 1, "2026-02-28 23:59:50",
      "2026-03-01 00:01:58", 128, 1);
  row("delayed", properties(0x06, 128, 1, 20), 1, "2026-03-01 00:00:10", "2026-03-01 00:02:18", 128,
      1);
  row("wrap", properties(0x42, 1000, 10, 0, 7), 4, "2026-03-01 09:18:13", "2026-03-01 09:59:53",
      250, 8);
  row("wrap, at the bound", properties(0x40, 27500, 1), 1, "2026-03-01 02:21:40",
      "2026-03-01 10:00:00", 27500, 215);
  row("wrap, nearly full", properties(0x40, 27501, 1), 1, "2026-03-01 02:30:11",
      "2026-03-01 10:00:00", 26989, 215);
  row("three channels, tie to even", properties(0, 128, 3), 3, "2026-02-28 23:59:50",
      "2026-03-01 00:01:58", 43, 1);
  row("half a sample, tie to even", properties(0, 129, 2), 2, "2026-02-28 23:59:50",
      "2026-03-01 00:01:59", 64, 2);
}

void TestSegments::memory() {
  QFETCH(QByteArray, answer);
  QFETCH(int, channels);
  const MemoryMap memory = map_memory(answer, channels, now);
  QTEST(stamp_text(whole_second(memory.start)), "start");
  // The half second of the last row is a tie.
  QTEST(stamp_text(memory.end), "end");
  QTEST(memory.samples_wanted, "samples");
  QTEST(memory.segment_count, "segments");
  QVERIFY_THROWS_EXCEPTION(BoundsError, map_memory(answer.left(20), channels, now));
}

void TestSegments::segment_times_data() {
  QTest::addColumn<int>("readings");
  QTest::addColumn<int>("channels");
  QTest::addColumn<QList<int>>("seconds");  // after the start: first and last of each segment
  QTest::newRow("short oldest") << 200 << 1 << QList<int>{0, 710, 720, 1990};
  QTest::newRow("all full") << 256 << 2 << QList<int>{0, 630, 640, 1270};
  QTest::newRow("three channels") << 256 << 3 << QList<int>{0, 417, 427, 843};
  QTest::newRow("three channels, short") << 130 << 3 << QList<int>{0, -3, 7, 423};
}

void TestSegments::segment_times() {
  QFETCH(int, readings);
  QFETCH(int, channels);
  const MemoryMap memory = map_memory(properties(0, readings, 10), channels, now);
  QList<int> seconds;
  for (const Segment& segment : memory.segments) {
    for (const QDateTime& time : {segment.first, segment.last}) {
      seconds << static_cast<int>(memory.start.secsTo(whole_second(time)));
    }
  }
  QTEST(seconds, "seconds");
}

void TestSegments::chosen_samples_data() {
  QTest::addColumn<int>("channels");
  QTest::addColumn<int>("first");
  QTest::addColumn<int>("last");
  QTest::addColumn<int>("samples");
  QTest::newRow("everything") << 1 << 0 << 7 << 1000;
  QTest::newRow("oldest only") << 1 << 0 << 0 << 104;
  QTest::newRow("without the newest") << 1 << 0 << 6 << 872;
  QTest::newRow("middle") << 1 << 2 << 4 << 384;
  QTest::newRow("newest") << 4 << 7 << 7 << 32;
  QTest::newRow("three channels, two") << 3 << 3 << 4 << 85;
  QTest::newRow("three channels, all but two") << 3 << 0 << 5 << 248;
}

void TestSegments::chosen_samples() {
  QFETCH(int, channels);
  QFETCH(int, first);
  QFETCH(int, last);
  const MemoryMap memory = map_memory(properties(0, 1000, 1), channels, now);
  QTEST(samples_in(memory, first, last), "samples");
}

void TestSegments::three_channels_drift_no_second() {
  const MemoryMap memory = map_memory(properties(0, 250 * 128, 3), 3, now);
  QCOMPARE(memory.start.secsTo(memory.segments.back().first), 249 * 128);
}

void TestSegments::kept_segments_are_bounded() {
  const MemoryMap memory = map_memory(properties(0, 65535, 1), 1, now);
  QCOMPARE(memory.segment_count, 512);
  QCOMPARE(int(memory.segments.size()), max_segments);
}

namespace {
const int registered = register_test<TestSegments>();
}

#include "test_segments.moc"
