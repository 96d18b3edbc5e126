#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <set>

#include "app/errors.h"
#include "device/device_table.h"
#include "support/runner.h"

class TestDeviceTable : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void reading_data();
  void reading();
  void channel_counts_data();
  void channel_counts();
  void garbage_is_bounded();
  void sample_file_names_every_channel();
};

void TestDeviceTable::reading_data() {
  QTest::addColumn<QByteArray>("file");
  QTest::addColumn<int>("count");
  QTest::addColumn<int>("rows");
  QTest::addColumn<QString>("name_1");  // field 0 of row 1
  QTest::addColumn<QString>("last_1");  // field 10 of row 1
  const QByteArray row_0 = "\"A\",,1,\"t\",C,,,,,,\r\n";
  QTest::newRow("two rows") << QByteArray("2\r\n" + row_0 + "\"B, \"\"2\"\"\",x,2,a,b,c,d,e,f,g,h")
                            << 2 << 2 << "B, \"2\""
                            << "h";
  QTest::newRow("one value a line")
      << QByteArray("2\n" + row_0 + "  B \nx\n2\na\nb\nc\nd\ne\nf\ng\n h\n") << 2 << 2 << "B"
      << "h";
  QTest::newRow("short file") << QByteArray("2\r\n" + row_0 + "B,x,2") << 2 << 2 << "B"
                              << "";
  QTest::newRow("more rows than fit") << QByteArray("200\n" + row_0 + "B") << 200 << 101 << "B"
                                      << "";
  QTest::newRow("negative") << QByteArray("-3\n" + row_0) << -3 << 0 << ""
                            << "";
  QTest::newRow("not a number") << QByteArray("two\n" + row_0 + row_0) << 0 << 0 << ""
                                << "";
  QTest::newRow("too large a number") << QByteArray("40000\n" + row_0) << 0 << 0 << ""
                                      << "";
  QTest::newRow("empty") << QByteArray() << 0 << 0 << ""
                         << "";
}

void TestDeviceTable::reading() {
  QFETCH(QByteArray, file);
  const DeviceTable table = read_device_table(file.toStdString());
  QTEST(int{table.DeviceCount}, "count");
  QTEST(table.rows(), "rows");
  QTEST(table.text(0, 1), "name_1");
  QTEST(table.text(10, 1), "last_1");
  QCOMPARE(table.text(11, 1), QString());
  QCOMPARE(table.text(0, 101), QString());
  QCOMPARE(table.text(12, 0), QString());
}

void TestDeviceTable::channel_counts_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("count");  // 0: refused
  QTest::newRow("one") << "1" << 1;
  QTest::newRow("four") << " 4 " << 4;
  for (const char* text : {"", "x", "0", "5", "-1", "99999"}) QTest::newRow(text) << text << 0;
}

void TestDeviceTable::channel_counts() {
  QFETCH(QString, text);
  QFETCH(int, count);
  DeviceTable table;
  table.set_text(2, 3, text);
  if (count == 0) {
    QVERIFY_THROWS_EXCEPTION(ConversionError, table.channel_count(3));
  } else {
    QCOMPARE(table.channel_count(3), count);
  }
}

// A device file can be anything: it must cost neither time nor memory.
void TestDeviceTable::garbage_is_bounded() {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("device.txt"));
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write("101\n");
  QVERIFY(file.resize(100'000'000));
  file.close();
  const std::clock_t before = std::clock();
  QCOMPARE(read_device_file(path).rows(), 101);
  QVERIFY(std::clock() - before < 2 * CLOCKS_PER_SEC);
  QCOMPARE(read_device_file(folder.filePath(QStringLiteral("none"))).rows(), 0);
}

void TestDeviceTable::sample_file_names_every_channel() {
  const DeviceTable table = read_device_file(QFINDTESTDATA("../../resources/device.txt"));
  QCOMPARE(table.rows(), int{table.DeviceCount});
  std::set<int> counts;
  for (int row = 0; row < table.rows(); ++row) {
    QVERIFY(!table.text(0, row).isEmpty());
    counts.insert(table.channel_count(row));
    for (int channel = 0; channel < 4; ++channel) {
      const bool used = channel < table.channel_count(row);
      QCOMPARE(!table.text(3 + 2 * channel, row).isEmpty(), used);
      const QString unit = table.text(4 + 2 * channel, row);
      QVERIFY(used ? unit == QStringLiteral("C") || unit == QStringLiteral("%RH") : unit.isEmpty());
    }
  }
  QCOMPARE(counts, std::set({1, 2, 3, 4}));
}

namespace {
const int registered = register_test<TestDeviceTable>();
}

#include "test_device_table.moc"
