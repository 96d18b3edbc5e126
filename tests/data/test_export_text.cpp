#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/errors.h"
#include "data/export_lines.h"
#include "data/export_text.h"
#include "data/file_handle.h"
#include "support/export_recording.h"
#include "support/runner.h"

class TestExportText : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void byte_for_byte();
  void without_samples();
  void what_a_data_file_can_bring();
  void the_document_labels_the_minimum_otherwise();
};

namespace {

QByteArray exported(const Recording& recording) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("out.txt"));
  FileHandle file;
  file.open_for_writing(path);
  write_text_export(recording, file);
  file.close();
  QFile written(path);
  return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray("(no file)");
}

}  // namespace

void TestExportText::byte_for_byte() {
  QCOMPARE(exported(cold_store()),
           QByteArray("\"Title：Cold store\"\r\n"
                      "\"Channels: 2\"\r\n"
                      "\"Length: 3\"\r\n"
                      "\"Start Time：2006-05-12 13:45:30\"\r\n"
                      "\"End Time：2006-05-12 13:47:30\"\r\n"
                      "\"Channel No.1,Channel Name:Temperature，Unit:C,Max.:4.60,Min.:4.40,"
                      "Average:4.50\"\r\n"
                      "\"Channel No.2,Channel Name:Humidity，Unit:%RH,Max.:61.20,Min.:60.80,"
                      "Average:61.00\"\r\n"
                      "\"\"\r\n"
                      "\"Number         Time              Temperature(C)       Humidity(%RH)\"\r\n"
                      "\" 1   2006-05-12 13:45:30               4.50       61.20\"\r\n"
                      "\" 2   2006-05-12 13:46:30               4.60       61.00\"\r\n"
                      "\" 3   2006-05-12 13:47:30               4.40       60.80\"\r\n"));
}

void TestExportText::without_samples() {
  Recording recording = cold_store();
  recording.SampleCount = 0;
  const QByteArrayList lines = exported(recording).split('\n');
  QCOMPARE(lines.size(), 10);
  QCOMPARE(lines[2], QByteArray("\"Length: 0\"\r"));
  QCOMPARE(lines[3], QByteArray("\"Start Time：\"\r"));
  QCOMPARE(lines[4], QByteArray("\"End Time：\"\r"));
  QVERIFY(lines[8].startsWith("\"Number "));
}

// Texts are written as they stand, quotes doubled as in the data file; no count and no value is
// taken on trust.
void TestExportText::what_a_data_file_can_bring() {
  Recording recording = cold_store();
  recording.Title = QStringLiteral("a \"b\", 湿度");
  recording.ChannelInfo[0][0] = QStringLiteral("4");
  recording.SampleTimes(1) = QStringLiteral("\"昨天\"").repeated(50);
  recording.SampleValues(1, 0) = std::numeric_limits<float>::max();
  recording.SampleValues(1, 1) = -std::numeric_limits<float>::infinity();
  const QByteArrayList lines = exported(recording).split('\n');
  QCOMPARE(lines[0], QByteArray("\"Title：a \"\"b\"\", 湿度\"\r"));
  QVERIFY(lines[5].startsWith("\"Channel No.4,"));
  QCOMPARE(lines[10],
           "\" 2   " + QByteArray("\"\"昨天\"\"").repeated(50) +
               "               340282346638528859811704183484516925440.00       -inf\"\r");

  recording.ChannelCount = -1;
  QCOMPARE(exported(recording).split('\n')[1], QByteArray("\"Channels:-1\"\r"));
  recording.SampleCount = Recording::max_samples + 1;
  QVERIFY_THROWS_EXCEPTION(BoundsError, exported(recording));
}

void TestExportText::the_document_labels_the_minimum_otherwise() {
  const Recording recording = cold_store();
  QStringList text = lines_above_samples(recording, MinimumLabel::with_stop);
  const QStringList document = lines_above_samples(recording, MinimumLabel::without_stop);
  QVERIFY(text != document);
  QCOMPARE(text.replaceInStrings(QStringLiteral(",Min.:"), QStringLiteral(",Min:")), document);
}

namespace {
const int registered = register_test<TestExportText>();
}

#include "test_export_text.moc"
