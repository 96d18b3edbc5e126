#include <QTest>

#include "acquire/block.h"
#include "app/times.h"
#include "support/runner.h"

class TestBlock : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void full_block_data();
  void full_block();
  void short_block();
  void values_data();
  void values();
  void samples_outside_are_dropped();
  void lying_length_is_harmless();
};

namespace {

const QDateTime first(QDate(2026, 3, 1), QTime(23, 59, 0), Qt::UTC);

// Reading r of a block (0 the newest) has the raw value 256 * r, so it reads r degrees.
QByteArray block(int data_length, bool full) {
  QByteArray answer(260, '\0');
  answer[1] = full ? 1 : 0;
  answer[2] = static_cast<char>(full ? 0 : data_length);
  for (int r = 0; r < data_length / 2; ++r) answer[3 + 2 * r + 1] = static_cast<char>(r);
  return answer;
}

float value(const DownloadedSamples& samples, int n, int slot) {
  return samples.values[static_cast<std::size_t>(n * Recording::channel_slots + slot)];
}

QString time(const DownloadedSamples& samples, int n) {
  return samples.times[static_cast<std::size_t>(n)];
}

}  // namespace

void TestBlock::full_block_data() {
  QTest::addColumn<int>("channels");
  QTest::addColumn<int>("wanted");
  QTest::addColumn<int>("position");
  QTest::addColumn<int>("first_index");
  QTest::addColumn<int>("stored");
  QTest::addColumn<int>("counted");
  QTest::newRow("one channel") << 1 << 128 << 0 << 0 << 128 << 128;
  QTest::newRow("two channels, second block") << 2 << 200 << 1 << 72 << 64 << 64;
  QTest::newRow("three channels store 42 and count 43") << 3 << 128 << 0 << 85 << 42 << 43;
  QTest::newRow("three channels, second block") << 3 << 128 << 1 << 43 << 42 << 43;
  QTest::newRow("four channels") << 4 << 32 << 0 << 0 << 32 << 32;
}

// The first sample in time stands last in the block, its channels in slot order.
void TestBlock::full_block() {
  QFETCH(int, channels);
  QFETCH(int, wanted);
  QFETCH(int, position);
  QFETCH(int, first_index);
  QFETCH(int, stored);
  DownloadedSamples samples;
  place_block(block(256, true), {channels, 60, wanted, position, first}, samples);
  QTEST(samples.count, "counted");
  for (int j = 0; j < stored; ++j) {
    QCOMPARE(time(samples, first_index + j), stamp_text(first.addSecs(60 * j)));
    for (int slot = 0; slot < channels; ++slot) {
      const int reading = 128 - channels * (j + 1) + slot;
      QCOMPARE(value(samples, first_index + j, slot), float(reading));
    }
  }
  QVERIFY(first_index == 0 || time(samples, first_index - 1).isEmpty());
  QVERIFY(time(samples, first_index + stored).isEmpty());
}

void TestBlock::short_block() {
  DownloadedSamples samples;
  // 72 readings of 2 channels; one full block of 64 samples is newer.
  place_block(block(144, false), {2, 1, 100, 1, first}, samples);
  QCOMPARE(samples.count, 36);
  QCOMPARE(time(samples, 0), QStringLiteral("2026-03-01 23:59:00"));
  QCOMPARE(value(samples, 0, 0), 70.0F);
  QCOMPARE(value(samples, 0, 1), 71.0F);
  QCOMPARE(value(samples, 35, 0), 0.0F);
  QCOMPARE(value(samples, 35, 1), 1.0F);
  QVERIFY(time(samples, 36).isEmpty());
}

void TestBlock::values_data() {
  QTest::addColumn<int>("raw");
  QTest::addColumn<float>("expected");
  QTest::newRow("1.5") << 0x0180 << 1.5F;
  QTest::newRow("32768 is +128") << 0x8000 << 128.0F;
  QTest::newRow("32769") << 0x8001 << -128.0F;
  QTest::newRow("just below zero") << 0xFFFF << 0.0F;
  QTest::newRow("tie") << 0x0020 << 0.13F;
  QTest::newRow("negative tie") << 0xFFE0 << -0.13F;
}

void TestBlock::values() {
  QFETCH(int, raw);
  QByteArray answer = block(2, false);
  answer[3] = static_cast<char>(raw % 256);
  answer[4] = static_cast<char>(raw / 256);
  DownloadedSamples samples;
  place_block(answer, {1, 1, 1, 0, first}, samples);
  QTEST(value(samples, 0, 0), "expected");
}

void TestBlock::samples_outside_are_dropped() {
  DownloadedSamples samples;
  place_block(block(256, true), {1, 1, 100, 0, first}, samples);
  QCOMPARE(samples.count, 128);
  QCOMPARE(time(samples, 0), stamp_text(first.addSecs(28)));
  place_block(block(256, true), {1, 1, 30100, 0, first}, samples);
  QCOMPARE(time(samples, 30000), stamp_text(first.addSecs(28)));
}

void TestBlock::lying_length_is_harmless() {
  DownloadedSamples samples;
  QByteArray answer = block(256, true);
  answer[1] = 0;
  answer[2] = static_cast<char>(255);
  place_block(answer, {4, 1, 31, 0, first}, samples);
  QCOMPARE(samples.count, 31);
  answer[2] = 1;
  place_block(answer, {1, 1, 0, 1, first}, samples);
  QCOMPARE(samples.count, 31);
  place_block(answer.left(20), {1, 1, 0, 1, first}, samples);
}

namespace {
const int registered = register_test<TestBlock>();
}

#include "test_block.moc"
