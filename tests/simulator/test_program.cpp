#include <QFileInfo>
#include <QSerialPort>
#include <QTemporaryDir>

#include "support/runner.h"
#include "support/simulator_process.h"

namespace {

// Sends as the program does, the address byte with mark parity, and takes what comes until it is
// enough or the time is over or the device gone. `bytes` is the request in hexadecimal.
QByteArray ask(QSerialPort& port, const char* bytes, int expected) {
  port.setParity(QSerialPort::MarkParity);
  port.write(QByteArray(1, '\0'));
  port.flush();
  QTest::qSleep(10);
  port.setParity(QSerialPort::SpaceParity);
  port.write(hex(bytes));
  QByteArray answer;
  while (answer.size() < expected && port.waitForReadyRead(1000)) answer += port.readAll();
  return answer;
}

}  // namespace

// The real program over a real pseudo-terminal.
class TestProgram : public QObject {
  Q_OBJECT

  const QTemporaryDir folder_;
  QString path(const char* name) const { return folder_.filePath(name); }
  QString link(const char* name) const { return QFileInfo(path(name)).symLinkTarget(); }

 private Q_SLOTS:
  void talks_and_clears_up() {
    // A link may take another link's place, but nothing else's.
    QVERIFY(QFile::link("/dev/nonexistent", path("com1")) && make_file(path("com2")));
    SimulatorProcess refused({"--link", path("com3"), "--link", path("com2")});
    QVERIFY(!refused.wait_ready() && refused.wait_end() == 1);
    QCOMPARE(link("com2") + link("com3"), "");

    SimulatorProcess simulator({"--link", path("com1"), "--link", path("com4"), "--limits",
                                "2:-10.5:25.5", "--log", path("log")});
    QVERIFY2(simulator.wait_ready(), qPrintable(simulator.errors()));
    QSerialPort port(link("com1"));
    QVERIFY(link("com4") == link("com1") && port.open(QIODevice::ReadWrite));
    QCOMPARE(ask(port, "0a010209", 8), hex("0a000480f58019e8"));
    // Line ends and the like pass unchanged.
    QCOMPARE(ask(port, "0b060200ff0a0d1aed", 5).size(), 5);
    QCOMPARE(ask(port, "0a010209", 8).mid(3, 4), hex("ff0a0d1a"));
    // Somebody takes a link over; it is theirs.
    QVERIFY(QFile::remove(path("com4")) && QFile::link("/dev/null", path("com4")));
    QCOMPARE(simulator.stop(), 0);
    QCOMPARE(link("com1") + link("com4"), "/dev/null");
    const QList<QByteArray> lines = contents(path("log")).split('\n');
    QVERIFY(lines[0].endsWith(" > 0a 01 02 09"));
    QVERIFY(lines[1].endsWith(" < 0a 00 04 80 f5 80 19 e8"));
  }

  void refuses_nonsense() {
    for (const char* text :
         {"--channels 2 --mask 1,3 | --mask: \"3\" is not a whole number from 1 to 2",
          "--battery nan | from 0 to 4", "--start 1999-12-31 | \"1999-12-31\" is not a time",
          "--limits 1:30:20 | not a down limit below an up limit", "com1 | belongs to no option",
          "--title ninechars | at most 8 characters", "--fault check:block=256 | is not a fault",
          "--log /nonexistent/log | /log"}) {
      const QStringList row = QString(text).split(" | ");
      SimulatorProcess simulator(row[0].split(' '));
      QVERIFY2(!simulator.wait_ready() && simulator.wait_end() > 0, text);
      QVERIFY2(simulator.errors().contains(row[1]), text);
    }
  }
};

const int registered = register_test<TestProgram>();

#include "test_program.moc"
