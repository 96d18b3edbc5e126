#include "simulator/fault.h"
#include "simulator/line.h"
#include "support/runner.h"

using simulator::Line;

class TestFaults : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void nonsense() {
    for (const char* text : {"", "loud", "silent:", "silent:first", "silent:first=0", "late:ms=-1",
                             "silent:ms=5", "check:block=256", "check:block=1,block=2"}) {
      QVERIFY2(!simulator::fault_from_text(text), text);
    }
  }

  // 260 bytes of 11 bits take 297.9 ms at 9600 baud, after the request's 4 bytes and the delay.
  void paced_bytes_keep_the_beat() {
    Line line;
    line.send({QByteArray(4, 'r'), QByteArray(260, 'x'), 5, false, {}}, 1'000'000);
    const qint64 begin = 1'000'000 + 4583 + 5000;
    QCOMPARE(line.next_due(), begin + 1145);
    QCOMPARE(line.take(begin + 100'000).bytes.size(), 87);
    QCOMPARE(line.take(begin + 297'915).bytes.size(), 172);
    QCOMPARE(line.take(begin + 297'916).bytes.size(), 1);
    QVERIFY(!line.next_due());
  }

  void answers_follow_one_another() {
    Line line(false);
    line.send({"a", "late", 1500, false, {}}, 0);
    line.send({"b", "first", 5, false, {}}, 100'000);
    line.send({"c", "second", 5, false, {}}, 100'000);
    QCOMPARE(line.take(104'999).bytes, QByteArray());
    QCOMPARE(line.take(105'000).bytes, "firstsecond");
    QCOMPARE(line.take(9'000'000).bytes, "late");
    Line paced;
    paced.send({{}, "12", 0, false, {}}, 0);
    paced.send({{}, "34", 0, true, {}}, 1000);
    paced.send({{}, "never", 0, false, {}}, 1010);
    QCOMPARE(paced.take(3'436).bytes, "123");
    const auto last = paced.take(5'000);
    QVERIFY(last.bytes == "4" && last.unplugged && !paced.next_due());
  }
};

const int registered = register_test<TestFaults>();

#include "test_faults.moc"
