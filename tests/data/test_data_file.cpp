#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <string_view>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

#include "app/errors.h"
#include "app/recording.h"
#include "data/data_file.h"
#include "data/field_writer.h"
#include "data/file_handle.h"
#include "data/file_names.h"
#include "support/runner.h"

class TestDataFile : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void base_names_data();
  void base_names();
  void the_file_byte_for_byte();
  void a_full_recording_reads_back_the_same();
  void samples_data();
  void samples();
  void forms_of_files_data();
  void forms_of_files();
  void comma_separated_records();
  void faults_data();
  void faults();
  void reading_any_content_is_bounded_data();
  void reading_any_content_is_bounded();
  void counts_beyond_the_recording_data();
  void counts_beyond_the_recording();
  void a_full_disk();
  void handles();
};

namespace {

const QByteArray cold_store =
    "\"Cold store\"\r\n\"Logger 1\"\r\n2\r\n"
    "\"1\"\r\n\"Temperature\"\r\n\"C\"\r\n\"2\"\r\n\"Humidity\"\r\n\"%RH\"\r\n3\r\n"
    "\"2006-05-12 13:45:30\"\r\n4.5\r\n61.2\r\n"
    "\"2006-05-12 13:46:30\"\r\n4.6\r\n61\r\n"
    "\"2006-05-12 13:47:30\"\r\n4.4\r\n60.8\r\n";

std::string_view view(const QByteArray& bytes) {
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void make_file(const QString& path, const QByteArray& bytes, qint64 size = -1) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(bytes), bytes.size());
  if (size >= 0) QVERIFY(file.resize(size));
}

QByteArray written(const Recording& recording) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("run"));
  FileHandle file;
  file.open_for_writing(path);
  skip_on_error([&] { write_recording(recording, file); });
  file.close();
  return contents(path);
}

}  // namespace

void TestDataFile::base_names_data() {
  QTest::addColumn<QString>("chosen");
  QTest::addColumn<QString>("used");
  QTest::newRow("with extension") << "/data/run.qlx"
                                  << "/data/run.qlx";
  QTest::newRow("without") << "/data/run"
                           << "/data/run.qlx";
  QTest::newRow("other extension") << "/data/run.txt"
                                   << "/data/run.qlx";
  QTest::newRow("two dots") << "/data/run.1.qlx"
                            << "/data/run.qlx";
  QTest::newRow("dot in a folder") << "D:\\data.2006\\run.qlx"
                                   << "D:\\data.qlx";
  QTest::newRow("dot first") << ".run"
                             << ".qlx";
}

void TestDataFile::base_names() {
  QFETCH(QString, chosen);
  QTEST(with_extension(chosen, QStringLiteral(".qlx")), "used");
}

void TestDataFile::the_file_byte_for_byte() {
  Recording recording;
  read_recording(view(cold_store), recording);
  QCOMPARE(recording.Title, "Cold store");
  QCOMPARE(recording.RecorderName, "Logger 1");
  QCOMPARE(recording.ChannelCount, std::int16_t{2});
  QCOMPARE(recording.ChannelInfo[0][1], "2");
  QCOMPARE(recording.ChannelInfo[1][1], "Humidity");
  QCOMPARE(recording.ChannelInfo[2][1], "%RH");
  QCOMPARE(recording.SampleCount, 3);
  QCOMPARE(recording.SampleTimes(2), "2006-05-12 13:47:30");
  QCOMPARE(recording.SampleValues(1, 0), 4.6F);
  QCOMPARE(recording.SampleValues(1, 1), 61.0F);
  QCOMPARE(written(recording), cold_store);
}

void TestDataFile::a_full_recording_reads_back_the_same() {
  Recording recording;
  recording.Title = QStringLiteral("Wand \"Süd\",\r\n冷库 1");
  recording.ChannelCount = 4;
  recording.SampleCount = Recording::max_samples;
  std::uint32_t random = 1;
  for (int n = 0; n < Recording::max_samples; ++n) {
    recording.SampleTimes(n) = QStringLiteral("2006-05-12 13:%1:30").arg(n);
    for (int slot = 0; slot < 4; ++slot) {
      random = random * 1664525U + 1013904223U;
      recording.SampleValues(n, slot) = static_cast<float>(random >> 8) / 1000.0F - 5000.0F;
    }
  }
  const QByteArray bytes = written(recording);
  QVERIFY(bytes.startsWith("\"Wand \"\"Süd\"\",\r\n冷库 1\"\r\n\"\"\r\n4\r\n\"\"\r\n"));
  Recording again;
  read_recording(view(bytes), again);
  QCOMPARE(again.Title, recording.Title);
  QVERIFY(std::ranges::equal(again.all_values(), recording.all_values()));
  QCOMPARE(again.SampleTimes(30000), recording.SampleTimes(30000));
  QCOMPARE(written(again), bytes);
}

void TestDataFile::samples_data() {
  QTest::addColumn<int>("channels");
  QTest::addColumn<int>("samples");
  QTest::newRow("cold-store.qlx") << 4 << 480;
  QTest::newRow("greenhouse.qlx") << 2 << 432;
}

// The sample files are as the program would write them.
void TestDataFile::samples() {
  const QByteArray bytes = contents(QStringLiteral(CORVANE_SAMPLES "/") + QTest::currentDataTag());
  Recording recording;
  read_recording(view(bytes), recording);
  QTEST(int{recording.ChannelCount}, "channels");
  QTEST(recording.SampleCount, "samples");
  QVERIFY(written(recording) == bytes);
}

void TestDataFile::forms_of_files_data() {
  QTest::addColumn<QByteArray>("file");
  QByteArray commas = cold_store;
  commas.replace("\r\n", ",");
  QTest::newRow("all commas") << commas;
  QByteArray feeds = cold_store;
  feeds.replace("\r\n", "\n");
  QTest::newRow("line feeds") << feeds;
  QTest::newRow("no last line end") << cold_store.chopped(2);
  QTest::newRow("more behind") << cold_store + "\"and more\",\"";
  QByteArray bare = cold_store;
  bare.replace("\"", " ");
  QTest::newRow("no quotes") << bare;
}

void TestDataFile::forms_of_files() {
  QFETCH(QByteArray, file);
  Recording recording;
  read_recording(view(file), recording);
  QCOMPARE(written(recording), cold_store);
}

// The automatic save of the live readings: the same fields, a record a line.
void TestDataFile::comma_separated_records() {
  FieldWriter out(1);
  out.text(u"Cold store").end_line().text(u"Logger 1").end_line().whole(2).end_line();
  out.text(u"1").text(u"Temperature").text(u"C").end_line();
  out.text(u"2").text(u"Humidity").text(u"%RH").end_line();
  out.whole(3).end_line();
  out.text(u"2006-05-12 13:45:30").real(4.5F).real(61.2F).end_line();
  out.text(u"2006-05-12 13:46:30").real(4.6F).real(61.0F).end_line();
  out.text(u"2006-05-12 13:47:30").real(4.4F).real(60.8F).end_line();
  const QByteArray bytes(out.bytes().data(), static_cast<qsizetype>(out.bytes().size()));
  QVERIFY(
      bytes.startsWith("\"Cold store\"\r\n\"Logger 1\"\r\n2\r\n\"1\",\"Temperature\",\"C\"\r\n"));
  QVERIFY(bytes.endsWith("\"2006-05-12 13:47:30\",4.4,60.8\r\n"));
  Recording recording;
  read_recording(view(bytes), recording);
  QCOMPARE(written(recording), cold_store);
}

void TestDataFile::faults_data() {
  QTest::addColumn<QByteArray>("file");
  // What has replaced the old contents when the fault is met.
  QTest::addColumn<QString>("title");
  QTest::addColumn<int>("channels");
  QTest::addColumn<int>("samples");
  QTest::addColumn<QString>("first_time");
  QTest::addColumn<float>("first_value");
  const auto changed = [](const char* from, const char* to) {
    QByteArray bytes = cold_store;
    return bytes.replace(from, to);
  };
  const QString time = QStringLiteral("2006-05-12 13:45:30");
  QTest::newRow("empty") << QByteArray() << "old" << 1 << 1 << "old" << 7.0F;
  QTest::newRow("broken title") << QByteArray("\"Cold\" store\r\n") << "old" << 1 << 1 << "old"
                                << 7.0F;
  QTest::newRow("five channels") << changed("\r\n2\r\n", "\r\n5\r\n") << "Cold store" << 5 << 1
                                 << "old" << 7.0F;
  QTest::newRow("channel count too large")
      << changed("\r\n2\r\n", "\r\n99999\r\n") << "Cold store" << 1 << 1 << "old" << 7.0F;
  QTest::newRow("quoted channel count")
      << changed("\r\n2\r\n", "\r\n\"2\"\r\n") << "Cold store" << 1 << 1 << "old" << 7.0F;
  QTest::newRow("sample count too large")
      << changed("\r\n3\r\n", "\r\n3000000000\r\n") << "Cold store" << 2 << 1 << "old" << 7.0F;
  QTest::newRow("no value") << changed("\r\n4.5\r\n", "\r\n\r\n") << "Cold store" << 2 << 3 << time
                            << 7.0F;
  QTest::newRow("decimal comma") << changed("61.2", "61,2") << "Cold store" << 2 << 3 << time
                                 << 4.5F;
  QTest::newRow("ends early") << cold_store.chopped(7) << "Cold store" << 2 << 3 << time << 4.5F;
}

void TestDataFile::faults() {
  QFETCH(QByteArray, file);
  Recording recording;
  recording.Title = QStringLiteral("old");
  recording.ChannelCount = 1;
  recording.SampleCount = 1;
  recording.SampleTimes(0) = QStringLiteral("old");
  recording.SampleValues(0, 0) = 7.0F;
  QVERIFY_THROWS_EXCEPTION(RunTimeError, read_recording(view(file), recording));
  QTEST(recording.Title, "title");
  QTEST(int{recording.ChannelCount}, "channels");
  QTEST(int{recording.SampleCount}, "samples");
  QTEST(recording.SampleTimes(0), "first_time");
  QTEST(recording.SampleValues(0, 0), "first_value");
}

void TestDataFile::reading_any_content_is_bounded_data() {
  QTest::addColumn<QByteArray>("start");
  QTest::addColumn<qint64>("size");  // filled up with zeros to this size
  const qint64 huge = qint64{4} * 1024 * 1024 * 1024;
  const QByteArray head = "a,b,4,1,t,C,2,t,C,3,t,C,4,t,C,2000000000\n";
  QTest::newRow("4 GB of nothing") << QByteArray() << huge;
  QTest::newRow("count of two billion") << head << qint64{-1};
  QTest::newRow("count of two billion in 4 GB") << head + "t,1,2,3,4\n" << huge;
  QTest::newRow("no line ends") << head + QByteArray(20'000'000, '1') << qint64{-1};
  QTest::newRow("only line ends") << "a,b,0,2000000000\n" + QByteArray(20'000'000, '\n')
                                  << qint64{-1};
  QTest::newRow("only quotes") << QByteArray(20'000'000, '"') << qint64{-1};
  QTest::newRow("only blanks") << QByteArray(20'000'000, ' ') << qint64{-1};
  QByteArray noise(20'000'000, Qt::Uninitialized);
  std::uint32_t random = 1;
  for (char& c : noise) c = static_cast<char>((random = random * 1664525U + 1013904223U) >> 24);
  QTest::newRow("noise") << noise << qint64{-1};
  QTest::newRow("noise behind a header") << head + noise << qint64{-1};
}

void TestDataFile::reading_any_content_is_bounded() {
  QFETCH(QByteArray, start);
  QFETCH(qint64, size);
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("run.qlx"));
  make_file(path, start, size);
  Recording recording;
  FileHandle file;
  QElapsedTimer timer;
  timer.start();
  file.open_for_reading(path);
  QVERIFY_THROWS_EXCEPTION(RunTimeError, read_recording(file, recording));
  QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
  QVERIFY(file.is_open());
}

void TestDataFile::counts_beyond_the_recording_data() {
  QTest::addColumn<int>("channels");
  QTest::addColumn<int>("samples");
  QTest::addColumn<int>("lines");  // those that stand in the written file
  QTest::newRow("none") << 0 << 0 << 4;
  QTest::newRow("negative channels") << -2 << 3 << 4 + 3;
  QTest::newRow("negative samples") << 2 << -3 << 4 + 6;
  QTest::newRow("too many samples") << 1 << 30002 << 4 + 3 + 2 * 30001;
  QTest::newRow("two billion samples") << 0 << 2'000'000'000 << 4 + 30001;
  QTest::newRow("too many channels") << 6 << 3 << 3 + 5 * 3;
}

// Writing stops at the bound of the arrays with what stands before it in the file; reading such a
// file stops at the bound, too.
void TestDataFile::counts_beyond_the_recording() {
  QFETCH(int, channels);
  QFETCH(int, samples);
  QFETCH(int, lines);
  Recording recording;
  recording.ChannelCount = static_cast<std::int16_t>(channels);
  recording.SampleCount = samples;
  const QByteArray bytes = written(recording);
  QCOMPARE(int(bytes.count("\r\n")), lines);
  Recording again;
  const bool held = channels <= Recording::max_channels && samples <= Recording::max_samples;
  again.SampleTimes(30000) = QStringLiteral("old");
  QCOMPARE(stop_at_first_failure(
               [&] { read_recording(view(bytes + (held ? "" : "\"one\"\r\n2\r\n")), again); }),
           held);
  QCOMPARE(int{again.ChannelCount}, channels);
  if (channels <= Recording::max_channels) QCOMPARE(int{again.SampleCount}, samples);
  QCOMPARE(again.SampleTimes(30000), samples > 30000 ? QString() : QStringLiteral("old"));
}

void TestDataFile::a_full_disk() {
  if (!QFile::exists(QStringLiteral("/dev/full"))) QSKIP("this system has no /dev/full");
  Recording recording;
  FileHandle file;
  file.open_for_writing(QStringLiteral("/dev/full"));
  QVERIFY_THROWS_EXCEPTION(FileError, write_recording(recording, file));
  QVERIFY(file.is_open());
}

void TestDataFile::handles() {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("run.qlx"));
  FileHandle file;
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_reading(path));
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_reading(folder.path()));
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_writing(folder.path()));
  QVERIFY_THROWS_EXCEPTION(FileError, file.read(1));
  QVERIFY_THROWS_EXCEPTION(FileError, file.write("a"));
  QVERIFY(!file.is_open());
  file.open_for_writing(path);
  file.write("abc");
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_reading(path));
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_writing(path));
  file.close();
  file.open_for_reading(path);
  QCOMPARE(file.read(2), "ab");
  file.close();
#ifdef Q_OS_UNIX
  // Opening a pipe that nobody serves would wait for ever.
  const QString pipe = folder.filePath(QStringLiteral("pipe.qlx"));
  QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_reading(pipe));
  QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_writing(pipe));
#endif
}

namespace {
const int registered = register_test<TestDataFile>();
}

#include "test_data_file.moc"
