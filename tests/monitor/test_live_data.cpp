#include <QAbstractItemModelTester>
#include <QTemporaryDir>
#include <QTest>

#include "app/errors.h"
#include "app/recording.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "device/device_table.h"
#include "monitor/automatic_save.h"
#include "monitor/live_monitor.h"
#include "support/runner.h"

class TestLiveData : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void readings_are_decoded_data();
  void readings_are_decoded();
  void short_answers_are_refused();
  void channels_of_a_type();
  void alarms_data();
  void alarms();
  void buffer_drops_the_oldest();
  void sheets_keep_the_contract_of_models();
  void live_sheet_is_numbered();
  void live_sheet_goes_on_after_clearing();
  void alarm_sheet_is_capped();
  void channel_labels_follow_the_readings();
  void link_state();
  void save_is_due();
  void automatic_save_reads_back();
  void automatic_save_is_in_records();
};

namespace {

LiveChannels two_channels() {
  return {2,
          {QStringLiteral("Air"), QStringLiteral("Damp"), {}, {}},
          {QStringLiteral("C"), QStringLiteral("%RH"), {}, {}}};
}

QString text_at(const QAbstractItemModel& model, int row, int column) {
  return model.index(row, column).data().toString();
}

QStringList row_texts(const QAbstractItemModel& model, int row) {
  QStringList texts;
  for (int column = 0; column < model.columnCount(); ++column) {
    texts << text_at(model, row, column);
  }
  return texts;
}

QString time_text(int reading) {
  return QStringLiteral("time %1").arg(reading);
}

constexpr std::array<AlarmLimits, 4> no_limits{};

}  // namespace

void TestLiveData::readings_are_decoded_data() {
  QTest::addColumn<int>("raw");
  QTest::addColumn<float>("value");
  QTest::newRow("zero") << 0x0000 << 0.0F;
  QTest::newRow("25") << 0x1900 << 25.0F;
  QTest::newRow("the border is positive") << 0x8000 << 128.0F;
  QTest::newRow("below the border") << 0x8001 << -127.99609375F;
  QTest::newRow("smallest negative") << 0xFFFF << -0.00390625F;
  QTest::newRow("largest positive") << 0x7FFF << 127.99609375F;
}

void TestLiveData::readings_are_decoded() {
  QFETCH(int, raw);
  QByteArray answer(14, '\0');
  answer[11] = static_cast<char>(raw % 256);
  answer[12] = static_cast<char>(raw / 256);
  const LiveReading reading = decode_readings(answer, 4);
  QTEST(reading[3], "value");
  QCOMPARE(reading[0], 0.0F);
}

void TestLiveData::short_answers_are_refused() {
  QCOMPARE(decode_readings(QByteArray(7, '\1'), 1)[0], 257 / 256.0F);
  QVERIFY_THROWS_EXCEPTION(BoundsError, decode_readings(QByteArray(6, '\1'), 1));
  QVERIFY_THROWS_EXCEPTION(BoundsError, decode_readings({}, 4));
}

void TestLiveData::channels_of_a_type() {
  const DeviceTable table = read_device_table("2\r\nTwo,,2,Air,C,Damp,%RH,No,X,,\r\nOdd,,x,Air,C");
  QVERIFY(live_channels(table, 0) == two_channels());
  QCOMPARE(live_channels(table, 1).count, 0);
}

void TestLiveData::alarms_data() {
  QTest::addColumn<QString>("up");
  QTest::addColumn<QString>("down");
  QTest::addColumn<float>("value");
  QTest::addColumn<bool>("alarm");
  const auto row = [](const char* up, const char* down, float value, bool alarm) {
    QTest::addRow("%s..%s %g", down, up, double(value))
        << QString::fromLatin1(up) << QString::fromLatin1(down) << value << alarm;
  };
  row("25", "-10", 20, false);
  row("25", "-10", 25, false);
  row("25", "-10", -10, false);
  row("25", "-10", 25.00390625F, true);
  row("25", "-10", -10.00390625F, true);
  row("0.1", "0", 0.1F, false);  // compared as 32-bit floats
  row("warm", "-10", 100, false);
  row("warm", "-10", -11, true);
  row("25", "", -100, false);
  row("25", "", 26, true);
  row("1e39", "-1e39", 127, false);
  row("-10", "25", 0, true);
}

void TestLiveData::alarms() {
  QFETCH(QString, up);
  QFETCH(QString, down);
  QFETCH(float, value);
  QTEST(out_of_range(value, alarm_limits(up, down)), "alarm");
}

void TestLiveData::buffer_drops_the_oldest() {
  LiveBuffer buffer;
  QVERIFY_THROWS_EXCEPTION(BoundsError, buffer.LiveTimes(0));
  const int last = 5 * LiveBuffer::capacity / 2;
  for (int n = 1; n <= last; ++n) {
    buffer.push(time_text(n), {float(n), float(-n), 0, 7});
    QCOMPARE(buffer.LiveCount(), std::min(n, LiveBuffer::capacity));
    QCOMPARE(buffer.dropped(), std::max(0, n - LiveBuffer::capacity));
    // The oldest and the newest are in place at every moment.
    QCOMPARE(buffer.LiveValues(0, 0), float(buffer.dropped() + 1));
    QCOMPARE(buffer.LiveValues(buffer.LiveCount() - 1, 1), float(-n));
  }
  QCOMPARE(buffer.LiveTimes(0), time_text(last - LiveBuffer::capacity + 1));
  const CurveSamples all = buffer.samples(0, 0, 20000);
  QCOMPARE(all.count, LiveBuffer::capacity);
  for (int slot = 0; slot < all.count; ++slot) QCOMPARE(all[slot], buffer.LiveValues(slot, 0));
  QCOMPARE(buffer.samples(3, 14990, 128).count, 10);
  QCOMPARE(buffer.samples(3, 15000, 128).count, 0);
  QVERIFY_THROWS_EXCEPTION(BoundsError, buffer.LiveValues(15000, 0));
  QVERIFY_THROWS_EXCEPTION(BoundsError, buffer.LiveValues(0, 4));
  QVERIFY_THROWS_EXCEPTION(BoundsError, buffer.reading(-1));
}

void TestLiveData::sheets_keep_the_contract_of_models() {
  LiveMonitor live;
  const QAbstractItemModelTester live_tester(&live.live_sheet);
  const QAbstractItemModelTester alarm_tester(&live.alarm_sheet);
  live.set_channels(two_channels());
  for (int n = 1; n <= 20; ++n) live.add(time_text(n), {float(n)}, {alarm_limits(u"10", u"0")});
  QCOMPARE(live.alarm_sheet.rowCount(), 10);
  live.live_sheet.clear();
  live.set_channels({});
  live.add(time_text(21), {}, no_limits);
  QCOMPARE(live.live_sheet.columnCount(), 2);
}

void TestLiveData::live_sheet_is_numbered() {
  LiveMonitor live;
  live.set_channels(two_channels());
  QStringList headers;
  for (int c = 0; c < 4; ++c) {
    headers << live.live_sheet.headerData(c, Qt::Horizontal).toString();
  }
  QCOMPARE(headers, QStringList({"Number", "Time", "Air ", "Damp "}));
  live.add(time_text(1), {-127.99609375F, 61.25F}, no_limits);
  QCOMPARE(row_texts(live.live_sheet, 0), QStringList({"1", "time 1", "-127.9961", "61.25"}));
  for (int n = 2; n <= 15001; ++n) live.add(time_text(n), {float(n), 0}, no_limits);
  QCOMPARE(live.live_sheet.rowCount(), 15000);
  QCOMPARE(row_texts(live.live_sheet, 0), QStringList({"1", "time 2", "2", "0"}));
  QCOMPARE(row_texts(live.live_sheet, 14999), QStringList({"15000", "time 15001", "15001", "0"}));
  for (int row = 0; row < 15000; ++row) {
    QCOMPARE(text_at(live.live_sheet, row, 0), QString::number(row + 1));
  }
}

// Cleared rows do not come back; new ones go on from the buffer's count.
void TestLiveData::live_sheet_goes_on_after_clearing() {
  LiveMonitor live;
  live.set_channels(two_channels());
  for (int n = 1; n <= 14999; ++n) live.add(time_text(n), {}, no_limits);
  live.live_sheet.clear();
  QCOMPARE(live.live_sheet.rowCount(), 0);
  QCOMPARE(live.live_sheet.columnCount(), 4);
  live.add(time_text(15000), {}, no_limits);
  QCOMPARE(row_texts(live.live_sheet, 0).mid(0, 2), QStringList({"15000", "time 15000"}));
  live.add(time_text(15001), {}, no_limits);
  QCOMPARE(live.live_sheet.rowCount(), 2);
  QCOMPARE(row_texts(live.live_sheet, 0).mid(0, 2), QStringList({"14999", "time 15000"}));
  QCOMPARE(row_texts(live.live_sheet, 1).mid(0, 2), QStringList({"15000", "time 15001"}));
}

void TestLiveData::alarm_sheet_is_capped() {
  LiveMonitor live;
  live.set_channels(two_channels());
  const std::array<AlarmLimits, 4> limits = {alarm_limits(u"10", u"0"), alarm_limits(u"10", u"0"),
                                             alarm_limits(u"-5", u"5"), alarm_limits(u"-5", u"5")};
  live.add(time_text(1), {5, 5}, limits);
  QCOMPARE(live.alarm_sheet.rowCount(), 0);
  live.add(time_text(2), {11, -1}, limits);
  QCOMPARE(row_texts(live.alarm_sheet, 0),
           QStringList({"2", "time 2", "AirOut Of Range    DampOut Of Range    "}));
  for (int n = 3; n <= 15001; ++n) live.add(time_text(n), {5, 11}, limits);
  QCOMPARE(live.alarm_sheet.rowCount(), 15000);
  // An alarm keeps the number that its reading had, while the readings' own move on.
  QCOMPARE(row_texts(live.alarm_sheet, 0).mid(0, 2), QStringList({"2", "time 2"}));
  QCOMPARE(row_texts(live.alarm_sheet, 14999).mid(0, 2), QStringList({"15000", "time 15001"}));
  live.add(time_text(15002), {5, 11}, limits);
  QCOMPARE(live.alarm_sheet.rowCount(), 15000);
  QCOMPARE(row_texts(live.alarm_sheet, 0), QStringList({"1", "time 3", "DampOut Of Range    "}));
  QCOMPARE(row_texts(live.alarm_sheet, 14998).mid(0, 2), QStringList({"14999", "time 15001"}));
  QCOMPARE(row_texts(live.alarm_sheet, 14999).mid(0, 2), QStringList({"15000", "time 15002"}));
}

void TestLiveData::channel_labels_follow_the_readings() {
  LiveMonitor live;
  live.set_channels(two_channels());
  const std::array<AlarmLimits, 4> limits = {alarm_limits(u"10", u"0")};
  const auto labels = [&] {
    const ChannelLabels texts = channel_labels(0, live.channels(), live.status[0], "10", "0");
    return QStringList(texts.begin(), texts.end());
  };
  QCOMPARE(labels(), QStringList({"1", "Air", "C", "", "10", "0", "", "", ""}));
  live.add(time_text(1), {-0.001F}, limits);
  QVERIFY(live.status[0].alarmed());
  live.add(time_text(2), {4.125F}, limits);
  live.add(time_text(3), {3}, limits);
  QVERIFY(!live.status[0].alarmed());
  QCOMPARE(labels(), QStringList({"1", "Air", "C", "3.00", "10", "0", "4.13", "0.00", "time 1"}));
}

void TestLiveData::link_state() {
  LiveMonitor live;
  QVERIFY(live.link_ok());
  live.count_missed();
  QVERIFY(live.link_ok());
  live.count_missed();
  QVERIFY(!live.link_ok());
  for (int i = 0; i < 70000; ++i) live.count_missed();
  QVERIFY(!live.link_ok());
  live.count_answered();
  QVERIFY(live.link_ok());
}

void TestLiveData::save_is_due() {
  LiveMonitor live;
  live.set_channels(two_channels());
  QList<int> due;
  for (int n = 1; n <= 30001; ++n) {
    if (live.add(time_text(n), {}, no_limits)) due << n;
  }
  QCOMPARE(due, QList<int>({15000, 30000}));
  QCOMPARE(live.SaveCounter, 1);
}

void TestLiveData::automatic_save_reads_back() {
  LiveMonitor live;
  live.set_channels(two_channels());
  for (int n = 1; n <= 15003; ++n) {
    live.add(time_text(n), {float(n) / 256, float(-n) / 256}, no_limits);
  }
  QTemporaryDir folder;
  const QString name = automatic_save_name(QDateTime(QDate(2026, 3, 1), QTime(9, 5, 7), Qt::UTC));
  QCOMPARE(name, "2026-03-01 09-05-07.qlx");
  const QString path = folder.filePath(name);
  for (int pass = 0; pass < 2; ++pass) {  // the second overwrites
    save_live_buffer(path, {QStringLiteral("Cold \"1\""), QStringLiteral("Two"), live.channels()},
                     live.buffer);
  }
  Recording recording;
  FileHandle file;
  file.open_for_reading(path);
  read_recording(file, recording);
  QCOMPARE(recording.Title, "Cold \"1\"");
  QCOMPARE(recording.RecorderName, "Two");
  QCOMPARE(int{recording.ChannelCount}, 2);
  QCOMPARE(recording.ChannelInfo[0][1], "2");
  QCOMPARE(recording.ChannelInfo[1][1], "Damp");
  QCOMPARE(recording.ChannelInfo[2][1], "%RH");
  QCOMPARE(recording.SampleCount, 15000);
  for (int n = 0; n < 15000; ++n) {
    QCOMPARE(recording.SampleTimes(n), live.buffer.LiveTimes(n));
    QCOMPARE(recording.SampleValues(n, 0), live.buffer.LiveValues(n, 0));
    QCOMPARE(recording.SampleValues(n, 1), live.buffer.LiveValues(n, 1));
  }
  QVERIFY_THROWS_EXCEPTION(FileError, save_live_buffer(folder.path(), {}, live.buffer));
}

void TestLiveData::automatic_save_is_in_records() {
  LiveBuffer buffer;
  buffer.push(QStringLiteral("1 Mar 2026 09:05:07"), {4.5F, -0.00390625F});
  buffer.push(QStringLiteral("1 Mar 2026 09:05:12"), {4, 61});
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("a.qlx"));
  save_live_buffer(path, {QStringLiteral("Cold"), QStringLiteral("Two"), two_channels()}, buffer);
  FileHandle file;
  file.open_for_reading(path);
  QCOMPARE(file.read(1000), QByteArray("\"Cold\"\r\n\"Two\"\r\n2\r\n"
                                       "\"1\",\"Air\",\"C\"\r\n\"2\",\"Damp\",\"%RH\"\r\n2\r\n"
                                       "\"1 Mar 2026 09:05:07\",4.5,-0.00390625\r\n"
                                       "\"1 Mar 2026 09:05:12\",4,61\r\n"));
}

namespace {
const int registered = register_test<TestLiveData>();
}

#include "test_live_data.moc"
