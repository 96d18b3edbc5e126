#include <QElapsedTimer>
#include <QFile>
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
  while (answer.size() < expected && port.waitForReadyRead(5000)) answer += port.readAll();
  return answer;
}

}  // namespace

// The real program over a real pseudo-terminal.
class TestProgram : public QObject {
  Q_OBJECT

  const QTemporaryDir folder_;

 private Q_SLOTS:
  void talks_and_clears_up() {
    const QStringList links = {folder_.filePath("com1"), folder_.filePath("com4")};
    QFile log(folder_.filePath("log"));
    SimulatorProcess simulator({"--link", links[0], "--link", links[1], "--limits", "2:-10.5:25.5",
                                "--log", log.fileName(), "--fault", "unplug:block=0"});
    QVERIFY2(simulator.wait_ready(), qPrintable(simulator.errors()));
    QCOMPARE(QFileInfo(links[1]).symLinkTarget(), simulator.device());
    QSerialPort port(simulator.device());
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(ask(port, "0a010209", 8), hex("0a000480f58019e8"));
    port.close();
    // A port can be opened again, and line ends and the like pass unchanged.
    QVERIFY(port.open(QIODevice::ReadWrite));
    QCOMPARE(ask(port, "0b060200ff0a0d1aed", 5).size(), 5);
    QCOMPARE(ask(port, "0a010209", 8).mid(3, 4), hex("ff0a0d1a"));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ask(port, "01010101", 260).size(), 260);
    // 4 + 260 bytes of 11 bits at 9600 baud are 302 ms, after the pause of 10 ms.
    QVERIFY2(timer.elapsed() >= 312, qPrintable(QString::number(timer.elapsed())));
    // What the device still held when it went away may be lost, as when a cable comes out.
    QVERIFY(ask(port, "01010000", 260).size() <= 130);
    QVERIFY(port.error() == QSerialPort::ResourceError || port.error() == QSerialPort::ReadError);
    port.close();
    QCOMPARE(simulator.wait_end(), 0);
    QVERIFY(!QFileInfo(links[0]).isSymLink() && !QFileInfo(links[1]).isSymLink());
    QVERIFY(log.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = log.readAll().trimmed().split('\n');
    QVERIFY(lines[0].endsWith(" > 0a 01 02 09") && lines[9].contains("  # fault: unplug"));
    QVERIFY(lines[1].endsWith(" < 0a 00 04 80 f5 80 19 e8"));
  }

  void links_replace_only_links() {
    const QString stale = folder_.filePath("com1");
    const QString precious = folder_.filePath("com2");
    QVERIFY(QFile::link("/dev/nonexistent", stale) && QFile::copy("/proc/version", precious));
    {
      SimulatorProcess simulator({"--link", stale});
      QVERIFY(simulator.wait_ready());
      QCOMPARE(QFileInfo(stale).symLinkTarget(), simulator.device());
      // Somebody takes the link over; it is theirs.
      QVERIFY(QFile::remove(stale) && QFile::link("/dev/null", stale));
      QCOMPARE(simulator.stop(), 0);
    }
    QCOMPARE(QFileInfo(stale).symLinkTarget(), "/dev/null");

    const QString fresh = folder_.filePath("com3");
    SimulatorProcess simulator({"--link", fresh, "--link", precious});
    QVERIFY(!simulator.wait_ready() && simulator.wait_end() == 1);
    QVERIFY(simulator.errors().contains(precious + " exists and is no symbolic link"));
    QVERIFY(!QFileInfo(fresh).isSymLink() && !QFileInfo(precious).isSymLink());
  }

  void refuses_nonsense() {
    for (const char* text :
         {"--channels 2 --mask 1,3 | --mask: \"3\" is not a whole number from 1 to 2",
          "--readings 32001 | from 0 to 32000", "--battery nan | from 0 to 4",
          "--start 1999-12-31 | \"1999-12-31\" is not a time", "--colour | colour",
          "--limits 1:30:20 | not a down limit below an up limit", "com1 | belongs to no option",
          "--title ninechars | at most 8 characters", "--fault late:bytes=3 | is not a fault",
          "--fault check:block=256 | is not a fault", "--fault silent:first | is not a fault",
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
