#include <QTest>

#include "simulator/fault.h"
#include "simulator/line.h"
#include "simulator/recorder.h"
#include "support/runner.h"

using simulator::Answer;
using simulator::Fault;
using simulator::FaultKind;
using simulator::Line;

class TestFaults : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void each_kind_data();
  void each_kind();
  void conditions_data();
  void conditions();
  void nonsense_data();
  void nonsense();
  void paced_bytes_keep_the_beat();
  void answers_follow_one_another();
  void unplugged_in_mid_answer();
};

void TestFaults::each_kind_data() {
  QTest::addColumn<QString>("fault");
  QTest::addColumn<QByteArray>("bytes");
  QTest::addColumn<int>("late_ms");
  const auto row = [](const char* fault, const char* bytes, int late_ms = 0) {
    QTest::newRow(fault) << fault << QByteArray::fromHex(bytes) << late_ms;
  };
  row("silent", "");
  row("check", "0a000480f58019 17");
  row("extra", "55 0a000480f58019e8");
  row("truncated", "0a000480");
  row("truncated:bytes=3", "0a0004");
  row("truncated:bytes=300", "0a000480f58019");
  row("late", "0a000480f58019e8", 1500);
  row("late:ms=900", "0a000480f58019e8", 900);
  row("garbage:bytes=3", "a5c2df 0a000480f58019e8");
  row("unplug", "0a000480");
}

void TestFaults::each_kind() {
  QFETCH(QString, fault);
  QFETCH(QByteArray, bytes);
  QFETCH(int, late_ms);
  const auto parsed = simulator::fault_from_text(fault);
  QVERIFY(parsed);
  const Answer sound{{}, QByteArray::fromHex("0a000480f58019e8"), 5, false, {}};
  const Answer spoilt = simulator::spoil(sound, *parsed);
  QCOMPARE(spoilt.bytes.toHex(' '), bytes.toHex(' '));
  QCOMPARE(spoilt.delay_ms, 5 + late_ms);
  QCOMPARE(spoilt.unplug, fault == u"unplug");
  QVERIFY(spoilt.remark.contains(fault.section(u':', 0, 0)));
}

// Which of the requests status, block 0, block 1, block 1, properties, status the fault strikes.
void TestFaults::conditions_data() {
  QTest::addColumn<QStringList>("faults");
  QTest::addColumn<QString>("struck");
  QTest::newRow("always") << QStringList{"silent"} << "xxxxxx";
  QTest::newRow("the first three") << QStringList{"silent:first=3"} << "xxx...";
  QTest::newRow("one request") << QStringList{"silent:request=4"} << "...x..";
  QTest::newRow("one block") << QStringList{"silent:block=1"} << "..xx..";
  QTest::newRow("one block once") << QStringList{"silent:block=1,first=1"} << "..x...";
  QTest::newRow("one command") << QStringList{"silent:command=00"} << "x....x";
  QTest::newRow("two faults") << QStringList{"silent:request=2", "silent:command=02"} << ".x..x.";
  QTest::newRow("never both") << QStringList{"silent:request=3", "silent:request=2,block=1"}
                              << "..x...";
}

void TestFaults::conditions() {
  QFETCH(QStringList, faults);
  QFETCH(QString, struck);
  simulator::Settings settings;
  for (const QString& fault : faults) settings.faults.push_back(*simulator::fault_from_text(fault));
  const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
  simulator::Recorder recorder(settings, now);
  QString seen;
  for (const char* request :
       {"00000000", "0001010000", "0001010101", "0001010101", "00020002", "00000000"}) {
    const auto answers = recorder.receive(QByteArray::fromHex(request), now);
    QCOMPARE(answers.size(), 1U);
    seen += answers.front().bytes.isEmpty() ? u'x' : u'.';
  }
  QCOMPARE(seen, struck);
}

void TestFaults::nonsense_data() {
  QTest::addColumn<QString>("text");
  for (const char* text :
       {"", "loud", "Silent", "silent:", "silent:first", "silent:first=", "silent:first=0",
        "silent:first=x", "silent:ms=5", "late:bytes=5", "late:ms=-1", "check:block=256",
        "check:block=1,block=2", "silent:=3", "silent:command=100", "silent,first=3"}) {
    QTest::newRow(text) << QString::fromLatin1(text);
  }
}

void TestFaults::nonsense() {
  QFETCH(QString, text);
  QVERIFY(!simulator::fault_from_text(text));
}

// 260 bytes of 11 bits take 297.9 ms at 9600 baud, after the request's 4 bytes and the delay.
void TestFaults::paced_bytes_keep_the_beat() {
  Line line;
  const QByteArray bytes(260, 'x');
  line.send({QByteArray(4, 'r'), bytes, 5, false, {}}, 1'000'000);
  const qint64 begin = 1'000'000 + 4583 + 5000;
  QCOMPARE(line.next_due(), begin + 1145);
  QCOMPARE(line.take(begin + 1144).bytes, QByteArray());
  qint64 taken = 0;
  for (qint64 now = begin; taken < 260; now += 3700) {
    taken += line.take(now).bytes.size();
    QCOMPARE(taken, std::min<qint64>(260, (now - begin) * 9600 / 11'000'000));
    QVERIFY(now - begin < 297'917 + 3700);
  }
  QVERIFY(!line.next_due());
}

void TestFaults::answers_follow_one_another() {
  Line line(false);
  line.send({"a", "late", 1500, false, {}}, 0);
  line.send({"b", "first", 5, false, {}}, 100'000);
  line.send({"c", "second", 5, false, {}}, 100'000);
  QCOMPARE(line.take(104'999).bytes, QByteArray());
  QCOMPARE(line.take(105'000).bytes, "firstsecond");
  QCOMPARE(line.next_due(), 1'500'000);
  QCOMPARE(line.take(9'000'000).bytes, "late");

  Line paced;
  paced.send({{}, "12", 0, false, {}}, 0);
  paced.send({{}, "3", 0, false, {}}, 1000);
  QCOMPARE(paced.take(2'300).bytes, "12");
  QCOMPARE(paced.take(3'435).bytes, QByteArray());
  QCOMPARE(paced.take(3'436).bytes, "3");
}

void TestFaults::unplugged_in_mid_answer() {
  Line line;
  line.send({{}, "12", 0, true, {}}, 0);
  line.send({{}, "never", 0, false, {}}, 10);
  QVERIFY(!line.take(2'000).unplugged);
  const auto last = line.take(2'300);
  QCOMPARE(last.bytes, "2");
  QVERIFY(last.unplugged);
  QVERIFY(!line.next_due());
}

namespace {
const int registered = register_test<TestFaults>();
}

#include "test_faults.moc"
