#include <QTest>

#include "app/errors.h"
#include "monitor/pattern.h"
#include "support/runner.h"

class TestPattern : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void bytes_data();
  void bytes();
  void refused_data();
  void refused();
  void clock_stays_for_stop();
  void texts_data();
  void texts();
  void texts_come_back_data();
  void texts_come_back();
};

namespace {

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 34, 56), Qt::UTC);

PatternSettings typed() {
  PatternSettings settings;
  settings.startup_type = StartupType::start_up;
  settings.channels = {true, false, true, false};
  settings.record_interval = 60;
  settings.all_data = QStringLiteral("1000");
  return settings;
}

QByteArray encoded(const PatternSettings& settings, const QDateTime& now = noon) {
  PatternFrame frame{};
  frame.fill(0xEE);
  encode_pattern(settings, now, frame);
  return QByteArray(reinterpret_cast<const char*>(frame.data()), frame.size()).toHex(' ');
}

}  // namespace

void TestPattern::bytes_data() {
  QTest::addColumn<PatternSettings>("settings");
  QTest::addColumn<QByteArray>("bytes");
  const auto row = [](const char* name, auto change, const char* bytes) {
    PatternSettings settings = typed();
    change(settings);
    QTest::newRow(name) << settings << QByteArray(bytes);
  };
  using S = PatternSettings&;
  row(
      "start up", [](S) {}, "88 05 1a 03 01 0c 22 38 00 00 3b 00 e8 03 ee");
  row(
      "start up, wrap", [](S s) { s.wrap = true; }, "c8 05 1a 03 01 0c 22 38 00 00 3b 00 e8 03 ee");
  row(
      "delayed",
      [](S s) {
        s.startup_type = StartupType::delayed;
        s.startup_delay = 32767;
      },
      "8c 05 1a 03 01 0c 22 38 ff 7f 3b 00 e8 03 ee");
  row(
      "delayed, wrap",
      [](S s) {
        s.startup_type = StartupType::delayed;
        s.wrap = true;
      },
      "cc 05 1a 03 01 0c 22 38 00 00 3b 00 e8 03 ee");
  row(
      "stop", [](S s) { s.startup_type = StartupType::stop; },
      "00 05 ee ee ee ee ee ee 00 00 3b 00 e8 03 ee");
  row(
      "stop, wrap",
      [](S s) {
        s.startup_type = StartupType::stop;
        s.wrap = true;
      },
      "40 05 ee ee ee ee ee ee 00 00 3b 00 e8 03 ee");
  row(
      "no channel", [](S s) { s.channels = {}; }, "88 00 1a 03 01 0c 22 38 00 00 3b 00 e8 03 ee");
  row(
      "all channels", [](S s) { s.channels.fill(true); },
      "88 0f 1a 03 01 0c 22 38 00 00 3b 00 e8 03 ee");
  row(
      "interval of a second", [](S s) { s.record_interval = 1; },
      "88 05 1a 03 01 0c 22 38 00 00 00 00 e8 03 ee");
  row(
      "no interval", [](S s) { s.record_interval = 0; },
      "88 05 1a 03 01 0c 22 38 00 00 ff 00 e8 03 ee");
  row(
      "longest interval", [](S s) { s.record_interval = 32767; },
      "88 05 1a 03 01 0c 22 38 00 00 fe 7f e8 03 ee");
  row(
      "most samples", [](S s) { s.all_data = QStringLiteral("65535"); },
      "88 05 1a 03 01 0c 22 38 00 00 3b 00 ff ff ee");
  row(
      "samples to the nearest even", [](S s) { s.all_data = QStringLiteral(" 510.5 "); },
      "88 05 1a 03 01 0c 22 38 00 00 3b 00 fe 01 ee");
}

void TestPattern::bytes() {
  QFETCH(PatternSettings, settings);
  QTEST(encoded(settings), "bytes");
}

void TestPattern::refused_data() {
  QTest::addColumn<PatternSettings>("settings");
  QTest::addColumn<QDateTime>("now");
  const auto row = [](const char* name, auto change, const QDateTime& now = noon) {
    PatternSettings settings = typed();
    change(settings);
    QTest::newRow(name) << settings << now;
  };
  using S = PatternSettings&;
  row("delay of 09:06:08", [](S s) { s.startup_delay = 32768; });
  row("interval of 09:06:08", [](S s) { s.record_interval = 32768; });
  row("interval of a day less a second", [](S s) { s.record_interval = 86399; });
  for (const char* text : {"", "many", "65536", "65535.5", "-1", "1e99", "0x10"}) {
    row(text, [text](S s) { s.all_data = QString::fromLatin1(text); });
  }
  const auto in_year = [](int year) { return QDateTime(QDate(year, 1, 1), QTime(0, 0), Qt::UTC); };
  row(
      "clock before 2000", [](S) {}, in_year(1999));
  row(
      "clock after 2255", [](S) {}, in_year(2256));
  QCOMPARE(encoded(typed(), in_year(2255)).mid(6, 2), QByteArray("ff"));
}

void TestPattern::refused() {
  QFETCH(PatternSettings, settings);
  QFETCH(QDateTime, now);
  QVERIFY_THROWS_EXCEPTION(ConversionError, encoded(settings, now));
}

// "Stop!" leaves the recorder's clock bytes as the last start has set them.
void TestPattern::clock_stays_for_stop() {
  PatternFrame frame{};
  encode_pattern(typed(), noon, frame);
  PatternSettings stop = typed();
  stop.startup_type = StartupType::stop;
  encode_pattern(stop, noon.addDays(400), frame);
  QCOMPARE(int{frame[0]}, 0);
  QCOMPARE(int{frame[2]}, 26);
  QCOMPARE(int{frame[7]}, 56);
  QVERIFY(!requests_start(frame));
  // A clock that could not be sent does not matter when it is not sent.
  encode_pattern(stop, QDateTime(QDate(1980, 1, 1), QTime(0, 0), Qt::UTC), frame);
}

void TestPattern::texts_data() {
  QTest::addColumn<QString>("title");
  QTest::addColumn<QString>("description");
  QTest::addColumn<QByteArray>("bytes");  // 8 and 24 units, blanks between them for reading
  const QByteArray none8(16, '\0');
  const QByteArray none24(48, '\0');
  QTest::newRow("empty") << QString() << QString() << none8 + none24;
  QTest::newRow("AB") << QStringLiteral("AB") << QString()
                      << QByteArray::fromHex("41004200") + QByteArray(12, '\0') + none24;
  QTest::newRow("Chinese") << QStringLiteral("冷库") << QStringLiteral("三")
                           << QByteArray::fromHex("b751935e") + QByteArray(12, '\0') +
                                  QByteArray::fromHex("094e") + QByteArray(46, '\0');
  QTest::newRow("longer than the fields")
      << QString(9, u'T') << QString(25, u'D')
      << QByteArray("T\0", 2).repeated(8) + QByteArray("D\0", 2).repeated(24);
}

void TestPattern::texts() {
  QFETCH(QString, title);
  QFETCH(QString, description);
  const DescriptionFrame frame = encode_texts(title, description);
  QTEST(QByteArray(reinterpret_cast<const char*>(frame.data()), 64), "bytes");
  QCOMPARE(int{frame[64]}, 0);
}

void TestPattern::texts_come_back_data() {
  QTest::addColumn<QString>("title");
  QTest::addColumn<QString>("read");
  const QString smile = QString::fromUtf8("\U0001F600");
  QTest::newRow("Latin") << QStringLiteral("Store") << QStringLiteral("Store");
  QTest::newRow("Chinese, full") << QStringLiteral("一二三四五六七八")
                                 << QStringLiteral("一二三四五六七八");
  QTest::newRow("pair inside") << u'a' + smile << u'a' + smile;
  QTest::newRow("pair cut by the border")
      << QStringLiteral("1234567") + smile
      << QStringLiteral("1234567") + QChar(QChar::ReplacementCharacter);
  QTest::newRow("ends at the first zero unit")
      << QStringLiteral("AB") + QChar(0) + u'C' << QStringLiteral("AB");
  QTest::newRow("half a pair in the middle")
      << QString(QChar(0xDE00)) + u'x' << QString(QChar(0xDE00)) + u'x';
}

void TestPattern::texts_come_back() {
  QFETCH(QString, title);
  const DescriptionFrame frame = encode_texts(title, {});
  QTEST(text_of_units(frame.data(), 16), "read");
}

namespace {
const int registered = register_test<TestPattern>();
}

#include "test_pattern.moc"
