#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTest>

#include "support/runner.h"
#include "support/simulator_process.h"

// The real program over a real pseudo-terminal.
class TestProgram : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void talks_and_clears_up();
  void paces_its_answers();
  void unplugs_itself();
  void links_replace_only_links();
  void refuses_nonsense_data();
  void refuses_nonsense();
};

namespace {

constexpr int until_silence_is_sure_ms = 150;

// Sends as the program does, the address byte with mark parity, and takes what comes until it is
// enough or the time is over or the device gone. `bytes` is the request in hexadecimal.
QByteArray ask(QSerialPort& port, const char* bytes, int expected, int wait_ms = 5000) {
  port.setParity(QSerialPort::MarkParity);
  port.write(QByteArray(1, '\0'));
  port.flush();
  QTest::qSleep(10);
  port.setParity(QSerialPort::SpaceParity);
  port.write(QByteArray::fromHex(bytes));
  QByteArray answer;
  QElapsedTimer timer;
  for (timer.start(); answer.size() < expected && timer.elapsed() < wait_ms;) {
    if (!port.waitForReadyRead(50) && port.error() != QSerialPort::TimeoutError) break;
    answer += port.readAll();
  }
  return answer;
}

bool open(QSerialPort& port, const QString& path) {
  port.setPortName(QFileInfo(path).symLinkTarget());
  port.setBaudRate(QSerialPort::Baud9600);
  return port.open(QIODevice::ReadWrite);
}

}  // namespace

void TestProgram::talks_and_clears_up() {
  const QTemporaryDir folder;
  const QStringList links = {folder.filePath("com1"), folder.filePath("com4")};
  const QString log = folder.filePath("log");
  SimulatorProcess simulator({"--link", links[0], "--link", links[1], "--unpaced", "--channels",
                              "2", "--readings", "300", "--limits", "2:-10.5:25.5", "--log", log,
                              "--fault", "silent:request=1"});
  QVERIFY2(simulator.wait_ready(), qPrintable(simulator.errors()));
  QCOMPARE(QFileInfo(links[1]).symLinkTarget(), simulator.device());

  QSerialPort port;
  QVERIFY(open(port, links[0]));
  QCOMPARE(ask(port, "000000", 10, until_silence_is_sure_ms), QByteArray());
  QCOMPARE(ask(port, "000000", 10).size(), 10);
  QCOMPARE(ask(port, "0a010209", 8), QByteArray::fromHex("0a000480f58019e8"));
  QCOMPARE(ask(port, "01010000", 260).size(), 260);
  QCOMPARE(ask(port, "0b060200ff0a0d1aec", 5, until_silence_is_sure_ms), QByteArray());
  QCOMPARE(ask(port, "0b060200ff0a0d1aed", 5).size(), 5);
  port.close();
  // Line ends and the like pass unchanged, and a port can be opened again.
  QVERIFY(open(port, links[1]));
  QCOMPARE(ask(port, "0a010209", 8).mid(3, 4), QByteArray::fromHex("ff0a0d1a"));
  port.close();

  QCOMPARE(simulator.stop(), 0);
  QVERIFY(!QFileInfo(links[0]).isSymLink() && !QFileInfo(links[1]).isSymLink());
  QFile file(log);
  QVERIFY(file.open(QIODevice::ReadOnly));
  const QList<QByteArray> lines = file.readAll().trimmed().split('\n');
  QCOMPARE(lines.size(), 14);
  QVERIFY(lines[0].endsWith(" > 00 00 00"));
  QVERIFY(lines[1].endsWith(" <  # fault: silent"));
  QVERIFY(lines[5].endsWith(" < 0a 00 04 80 f5 80 19 e8"));
}

// A block at 9600 baud: 4 + 260 bytes of 11 bits are 302 ms.
void TestProgram::paces_its_answers() {
  SimulatorProcess simulator({"--readings", "256"});
  QVERIFY(simulator.wait_ready());
  QSerialPort port(simulator.device());
  QVERIFY(port.open(QIODevice::ReadWrite));
  QElapsedTimer timer;
  timer.start();
  QCOMPARE(ask(port, "01010101", 260).size(), 260);
  QVERIFY2(timer.elapsed() >= 312, qPrintable(QString::number(timer.elapsed())));
}

void TestProgram::unplugs_itself() {
  const QTemporaryDir folder;
  const QString link = folder.filePath("com1");
  SimulatorProcess simulator({"--link", link, "--fault", "unplug:block=0"});
  QVERIFY(simulator.wait_ready());
  QSerialPort port;
  QVERIFY(open(port, link));
  QCOMPARE(ask(port, "020002", 22).size(), 22);
  // What the device still held when it went away may be lost, as when a cable comes out.
  QVERIFY(ask(port, "01010000", 260).size() <= 130);
  QVERIFY(port.error() == QSerialPort::ResourceError || port.error() == QSerialPort::ReadError);
  QCOMPARE(simulator.wait_end(), 0);
  QVERIFY(!QFileInfo(link).isSymLink());
}

void TestProgram::links_replace_only_links() {
  const QTemporaryDir folder;
  const QString stale = folder.filePath("com1");
  const QString precious = folder.filePath("com2");
  QVERIFY(QFile::link("/dev/nonexistent", stale));
  QFile file(precious);
  QVERIFY(file.open(QIODevice::WriteOnly) && file.write("data") == 4);
  file.close();
  {
    SimulatorProcess simulator({"--link", stale});
    QVERIFY(simulator.wait_ready());
    QCOMPARE(QFileInfo(stale).symLinkTarget(), simulator.device());
    // Somebody takes the link over; it is theirs.
    QVERIFY(QFile::remove(stale) && QFile::link("/dev/null", stale));
  }
  QCOMPARE(QFileInfo(stale).symLinkTarget(), "/dev/null");

  const QString fresh = folder.filePath("com3");
  SimulatorProcess simulator({"--link", fresh, "--link", precious});
  QVERIFY(!simulator.wait_ready());
  QCOMPARE(simulator.wait_end(), 1);
  QVERIFY(simulator.errors().contains(precious + " exists and is no symbolic link"));
  QVERIFY(!QFileInfo(fresh).isSymLink());
  QCOMPARE(QFileInfo(precious).size(), 4);
}

void TestProgram::refuses_nonsense_data() {
  QTest::addColumn<QStringList>("options");
  QTest::addColumn<QString>("complaint");
  const auto row = [](const QStringList& options, const char* complaint) {
    QTest::newRow(qPrintable(options.join(' '))) << options << QString::fromLatin1(complaint);
  };
  row({"--channels", "5"}, "--channels: \"5\" is not a whole number from 1 to 4");
  row({"--channels", "2", "--mask", "1,3"}, "--mask: \"3\" is not a whole number from 1 to 2");
  row({"--readings", "32001"}, "from 0 to 32000");
  row({"--interval", "0"}, "from 1 to 65536");
  row({"--start", "2026-02-30 10:00:00"}, "--start: \"2026-02-30 10:00:00\" is not a time");
  row({"--start", "1999-12-31 23:59:59"}, "2000 to 2255");
  row({"--title", "ninechars"}, "at most 8 characters");
  row({"--battery", "nan"}, "from 0 to 4");
  row({"--limits", "1:30:20"}, "not a down limit below an up limit");
  row({"--limits", "1:-200:20"}, "from -128 to 127.99");
  row({"--fault", "late:bytes=3"}, "\"late:bytes=3\" is not a fault");
  row({"--log", "/nonexistent/log"}, "/nonexistent/log");
  row({"com1"}, "\"com1\" belongs to no option");
  row({"--colour"}, "colour");
}

void TestProgram::refuses_nonsense() {
  QFETCH(QStringList, options);
  QFETCH(QString, complaint);
  SimulatorProcess simulator(options);
  QVERIFY(!simulator.wait_ready());
  QVERIFY(simulator.wait_end() > 0);
  const QString errors = simulator.errors();
  QVERIFY2(errors.contains(complaint), qPrintable(errors));
}

namespace {
const int registered = register_test<TestProgram>();
}

#include "test_program.moc"
