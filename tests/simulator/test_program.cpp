#include <QFileInfo>
#include <QTemporaryDir>

#include "base/clock.h"
#include "base/program_folder.h"
#include "device/packet.h"
#include "device/qt_serial_port.h"
#include "support/runner.h"
#include "support/simulator_process.h"

// The real simulator on a real pseudo-terminal talks with the real port.
class TestProgram : public QObject {
  Q_OBJECT

  const QTemporaryDir folder_;
  QString path(const char* name) const { return folder_.filePath(name); }
  QString link(const char* name) const { return QFileInfo(path(name)).symLinkTarget(); }

 private Q_SLOTS:
  void talks_and_clears_up() {
    // A link may replace another link, but nothing else.
    QVERIFY(QFile::link("/dev/nonexistent", path("com1")) && make_file(path("com2")));
    SimulatorProcess refused({"--link", path("com3"), "--link", path("com2")});
    QVERIFY(!refused.wait_ready() && refused.wait_end() == 1);
    QCOMPARE(link("com2") + link("com3"), "");

    SimulatorProcess simulator({"--link", path("com1"), "--link", path("com4"), "--limits",
                                "2:-10.5:25.5", "--log", path("log")});
    QVERIFY2(simulator.wait_ready(), qPrintable(simulator.errors()));
    QCOMPARE(link("com4"), link("com1"));
    SystemClock clock;
    QtSerialPort port;
    set_program_folder(folder_.path());
    RecorderLink line(port, clock);
    Packet::attach(line);
    port.open();
    QVERIFY(Packet::Exchange(Packet::BuildReadLimits(2)));
    QCOMPARE(Packet::ReceiveBuffer, hex("0a000480f58019e8"));
    // Somebody replaces a link. The simulator then leaves it alone.
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
