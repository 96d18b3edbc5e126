#include "simulator/fault.h"
#include "simulator/line.h"
#include "simulator/recorder.h"
#include "support/runner.h"

using simulator::fault_from_text;
using simulator::Line;

const QDateTime noon(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

class TestFaults : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void kinds() {
    for (const char* text :
         {"silent |  | 0", "check | 0a000480f5801917 | 0", "extra | 550a000480f58019e8 | 0",
          "truncated | 0a000480 | 0", "truncated:bytes=300 | 0a000480f58019 | 0",
          "truncated:bytes=3 | 0a0004 | 0", "garbage:bytes=3 | a5c2df0a000480f58019e8 | 0",
          "late | 0a000480f58019e8 | 1500", "late:ms=900 | 0a000480f58019e8 | 900",
          "unplug | 0a000480 | 0"}) {
      const QStringList row = QString(text).split(" | ");
      const simulator::Answer sound{{}, hex("0a000480f58019e8"), 5, false, {}};
      const simulator::Answer spoilt = spoil(sound, *fault_from_text(row[0]));
      QCOMPARE(QString(spoilt.bytes.toHex()), row[1]);
      QCOMPARE(spoilt.delay_ms, 5 + row[2].toInt());
      QCOMPARE(spoilt.unplug, row[0] == u"unplug");
    }
  }

  // Which of the requests status, block 0, block 1, block 1, properties, stop the faults strike.
  void conditions() {
    for (const char* text :
         {"silent | xxxxxx", "silent:first=3 | xxx...", "silent:request=4 | ...x..",
          "silent:block=1 | ..xx..", "silent:block=1,first=1 | ..x...",
          "silent:command=07 | .....x", "silent:request=2 silent:command=02 | .x..x.",
          "silent:request=3 silent:request=2,block=1 | ..x..."}) {
      const QStringList row = QString(text).split(" | ");
      simulator::Settings settings;
      for (const auto& fault : row[0].split(' ')) {
        settings.faults.push_back(*fault_from_text(fault));
      }
      simulator::Recorder recorder(settings, noon);
      QString seen;
      for (const char* request :
           {"00000000", "0001010000", "0001010101", "0001010101", "00020002", "0007010006"}) {
        seen += recorder.receive(hex(request), noon).at(0).bytes.isEmpty() ? 'x' : '.';
      }
      QCOMPARE(seen, row[1]);
      // What is not heard is not done.
      QCOMPARE(recorder.running(noon), seen.endsWith('x'));
    }
  }

  void nonsense() {
    for (const char* text : {"", "loud", "silent:", "silent:first", "silent:first=0",
                             "silent:first=x", "silent:ms=5", "late:ms=-1", "check:block=256",
                             "check:block=1,block=2", "silent:=3", "silent,first=3"}) {
      QVERIFY2(!fault_from_text(text), text);
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
    QCOMPARE(paced.take(3'435).bytes, "12");
    QCOMPARE(paced.take(3'436).bytes, "3");
    const auto last = paced.take(5'000);
    QVERIFY(last.bytes == "4" && last.unplugged && !paced.next_due());
  }
};

const int registered = register_test<TestFaults>();

#include "test_faults.moc"
