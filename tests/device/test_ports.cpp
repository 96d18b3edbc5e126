#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/errors.h"
#include "device/port_names.h"
#include "support/runner.h"

class TestPorts : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void devices_data();
  void devices();
  void settings_data();
  void settings();
};

void TestPorts::devices_data() {
  QTest::addColumn<int>("number");
  QTest::addColumn<QString>("device");
  QTest::newRow("link") << 1 << "/dev/null";
  QTest::newRow("second of the system") << 2 << "/dev/ttyS10";
  QTest::newRow("link that leads nowhere") << 3 << "";
  QTest::newRow("fourth of the system") << 4 << "/dev/ttyUSB0";
  QTest::newRow("beyond") << 5 << "";
}

// The links in the folder come first; the system's ports keep their own numbers beside them.
void TestPorts::devices() {
#ifdef Q_OS_WIN
  QSKIP("COMn are the system's own names here");
#endif
  QFETCH(int, number);
  QTemporaryDir folder;
  QVERIFY(QFile::link(QStringLiteral("/dev/null"), folder.filePath(QStringLiteral("com1"))));
  QVERIFY(QFile::link(QStringLiteral("/dev/gone"), folder.filePath(QStringLiteral("com3"))));
  const QStringList system = {"/dev/ttyUSB0", "/dev/ttyS10", "/dev/ttyS12", "/dev/ttyS2"};
  QTEST(serial_device(number, folder.path(), system), "device");
}

void TestPorts::settings_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<bool>("good");
  QTest::newRow("mark") << "9600,M,8,1" << true;
  QTest::newRow("lower case, blanks") << " 19200, e, 7, 2" << true;
  for (const char* text : {"", "9600", "9600,X,8,1", "9600,,8,1", "9600,MS,8,1", "0,M,8,1",
                           "9600,M,9,1", "9600,M,8,3", "9600,M,8,1,1", "x,M,8,1"}) {
    QTest::newRow(text) << text << false;
  }
}

void TestPorts::settings() {
  QFETCH(QString, text);
  QFETCH(bool, good);
  if (!good) {
    QVERIFY_THROWS_EXCEPTION(PortError, line_settings(text));
    return;
  }
  const LineSettings settings = line_settings(text);
  const bool mark = text.contains(u'M');
  QCOMPARE(settings.baud_rate, mark ? 9600 : 19200);
  QCOMPARE(settings.parity, mark ? QSerialPort::MarkParity : QSerialPort::EvenParity);
  QCOMPARE(settings.data_bits, mark ? QSerialPort::Data8 : QSerialPort::Data7);
  QCOMPARE(settings.stop_bits, mark ? QSerialPort::OneStop : QSerialPort::TwoStop);
}

namespace {
const int registered = register_test<TestPorts>();
}

#include "test_ports.moc"
