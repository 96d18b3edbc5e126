#include <QTemporaryDir>

#include "app/errors.h"
#include "device/device_table.h"
#include "device/port_names.h"
#include "support/runner.h"

class TestDeviceTable : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void reading() {
    // Count, rows in use, first and last field of row 1.
    const auto read = [](const QByteArray& bytes) {
      const DeviceTable table = read_device_table(bytes.toStdString());
      const QString outside = table.text(11, 1) + table.text(0, 101) + table.text(12, 0);
      return QStringLiteral("%1|%2|").arg(table.DeviceCount).arg(table.rows()) + table.text(0, 1) +
             u'|' + table.text(10, 1) + outside;
    };
    const QByteArray a = "\"A\",,1,\"t\",C,,,,,,\r\n";
    QCOMPARE(read("2\r\n" + a + "\"B, \"\"2\"\"\",x,2,a,b,c,d,e,f,g,h"), "2|2|B, \"2\"|h");
    QCOMPARE(read("2\n" + a + "  B \nx\n2\na"), "2|2|B|");
    QCOMPARE(read("200\n" + a + "B"), "200|101|B|");
    QCOMPARE(read("-3\n" + a), "-3|0||");
    QCOMPARE(read("40000\n" + a + a), "0|0||");
    DeviceTable table;
    table.set_text(2, 3, " 4 ");
    QCOMPARE(table.channel_count(3), 4);
    for (const char* text : {"x", "0", "5"}) {
      table.set_text(2, 3, text);
      QVERIFY_THROWS_EXCEPTION(ConversionError, table.channel_count(3));
    }
  }

  // A device file can be anything: it must cost neither time nor memory.
  void garbage_is_bounded() {
    QTemporaryDir folder;
    QFile file(folder.filePath("device.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("101\n") && file.resize(100'000'000));
    file.close();
    QCOMPARE(read_device_file(file.fileName()).rows(), 101);
    QCOMPARE(read_device_file(folder.filePath("none")).rows(), 0);
  }

  // The links in the folder come first; the system's ports keep their own numbers beside them.
  void port_devices() {
    QTemporaryDir folder;
    QVERIFY(QFile::link("/dev/null", folder.filePath("com1")));
    QVERIFY(QFile::link("/dev/gone", folder.filePath("com3")));
    const QStringList system = {"/dev/ttyUSB0", "/dev/ttyS10", "/dev/ttyS12", "/dev/ttyS2"};
    QStringList devices;
    for (int n = 1; n <= 5; ++n) devices << serial_device(n, folder.path(), system);
    QCOMPARE(devices, QStringList({"/dev/null", "/dev/ttyS10", "", "/dev/ttyUSB0", ""}));

    const LineSettings mark = line_settings(" 9600, m,8,1");
    QVERIFY(mark.baud_rate == 9600 && mark.parity == QSerialPort::MarkParity &&
            mark.data_bits == QSerialPort::Data8 && mark.stop_bits == QSerialPort::OneStop);
    for (const char* text : {"9600,X,8,1", "0,M,8,1", "9600,M,8,1,1"}) {
      QVERIFY_THROWS_EXCEPTION(PortError, line_settings(text));
    }
  }
};

const int registered = register_test<TestDeviceTable>();

#include "test_device_table.moc"
