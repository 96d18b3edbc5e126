#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>

#include "data/data_file.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

#include "app/errors.h"
#include "app/recording.h"
#include "data/field_writer.h"
#include "data/file_handle.h"
#include "data/file_names.h"
#include "support/runner.h"

namespace {

const QByteArray cold_store =
    "\"Cold store\"\r\n\"Logger 1\"\r\n2\r\n"
    "\"1\"\r\n\"Temperature\"\r\n\"C\"\r\n\"2\"\r\n\"Humidity\"\r\n\"%RH\"\r\n3\r\n"
    "\"2006-05-12 13:45:30\"\r\n4.5\r\n61.2\r\n"
    "\"2006-05-12 13:46:30\"\r\n4.6\r\n61\r\n"
    "\"2006-05-12 13:47:30\"\r\n4.4\r\n60.8\r\n";

QByteArray changed(const char* from, const char* to) {
  QByteArray bytes = cold_store;
  return bytes.replace(from, to);
}

bool read(const QByteArray& bytes, Recording& recording) {
  const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  return stop_at_first_failure([&] { read_recording(view, recording); });
}

QByteArray written(const Recording& recording) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("run")));
  FileHandle handle;
  handle.open_for_writing(file.fileName());
  skip_on_error([&] { write_recording(recording, handle); });
  handle.close();
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

QByteArray written_again(const QByteArray& bytes) {
  Recording recording;
  return read(bytes, recording) ? written(recording) : QByteArray("(refused)");
}

struct Fault {
  const char* name;
  QByteArray file;
  // What has replaced the old contents when the fault is met.
  const char* title = "Cold store";
  int channels = 1;
  int samples = 1;
  const char* first_time = "old";
  float first_value = 7.0F;
};

struct Bulk {
  const char* name;
  QByteArray start;
  qint64 size = -1;  // filled up with zeros to this size
};

}  // namespace

class TestDataFile : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void base_names() {
    const auto used = [](const char* chosen) {
      return with_extension(QString::fromLatin1(chosen), QStringLiteral(".qlx"));
    };
    for (const char* chosen : {"/data/run.qlx", "/data/run", "/data/run.txt", "/data/run.1.qlx"}) {
      QCOMPARE(used(chosen), "/data/run.qlx");
    }
    QCOMPARE(used("D:\\data.2006\\run.qlx"), "D:\\data.qlx");
    QCOMPARE(used(".run"), ".qlx");
  }

  void fields_stand_where_they_belong() {
    Recording recording;
    QVERIFY(read(cold_store, recording));
    QCOMPARE(recording.RecorderName, "Logger 1");
    QCOMPARE(recording.ChannelInfo[0][1] + recording.ChannelInfo[1][1], "2Humidity");
    QCOMPARE(recording.ChannelInfo[2][1], "%RH");
    QCOMPARE(recording.SampleTimes(2), "2006-05-12 13:47:30");
    QCOMPARE(recording.SampleValues(1, 1), 61.0F);
  }

  // Other programs' forms of the same file, and the samples, which are as the program writes them.
  void files_read_back_byte_for_byte() {
    for (const QByteArray& file :
         {cold_store, changed("\r\n", ","), changed("\r\n", "\n"), changed("\"", " "),
          cold_store.chopped(2), cold_store + "\"and more\",\""}) {
      QCOMPARE(written_again(file), cold_store);
    }
    for (const char* name : {"cold-store.qlx", "greenhouse.qlx"}) {
      QFile sample(QStringLiteral(CORVANE_SAMPLES "/") + QString::fromLatin1(name));
      QVERIFY(sample.open(QIODevice::ReadOnly));
      const QByteArray bytes = sample.readAll();
      QVERIFY(written_again(bytes) == bytes);
    }
  }

  // The automatic save of the live readings: the same fields, a record a line.
  void comma_separated_records() {
    FieldWriter out(1);
    out.text(u"Cold store").end_line().text(u"Logger 1").end_line().whole(2).end_line();
    out.text(u"1").text(u"Temperature").text(u"C").end_line();
    out.text(u"2").text(u"Humidity").text(u"%RH").end_line().whole(3).end_line();
    out.text(u"2006-05-12 13:45:30").real(4.5F).real(61.2F).end_line();
    out.text(u"2006-05-12 13:46:30").real(4.6F).real(61.0F).end_line();
    out.text(u"2006-05-12 13:47:30").real(4.4F).real(60.8F).end_line();
    const QByteArray bytes(out.bytes().data(), static_cast<qsizetype>(out.bytes().size()));
    QVERIFY(bytes.contains("\r\n\"2\",\"Humidity\",\"%RH\"\r\n3\r\n\"2006-"));
    QVERIFY(bytes.endsWith("\"2006-05-12 13:47:30\",4.4,60.8\r\n"));
    QCOMPARE(written_again(bytes), cold_store);
  }

  void a_full_recording_reads_back_the_same() {
    Recording recording;
    recording.Title = QStringLiteral("Wand \"Süd\",\r\n冷库 1");
    recording.ChannelCount = 4;
    recording.SampleCount = Recording::max_samples;
    std::uint32_t random = 1;
    for (int n = 0; n < Recording::max_samples; ++n) {
      recording.SampleTimes(n) = QString::number(n);
      for (int slot = 0; slot < 4; ++slot) {
        random = random * 1664525U + 1013904223U;
        recording.SampleValues(n, slot) = static_cast<float>(random >> 8) / 1000.0F - 5000.0F;
      }
    }
    const QByteArray bytes = written(recording);
    QVERIFY(bytes.startsWith("\"Wand \"\"Süd\"\",\r\n冷库 1\"\r\n\"\"\r\n4\r\n\"\"\r\n"));
    Recording again;
    QVERIFY(read(bytes, again));
    QVERIFY(std::ranges::equal(again.all_values(), recording.all_values()));
    QVERIFY(written(again) == bytes);
  }

  void faults_data() {
    const char* time = "2006-05-12 13:45:30";
    add_rows<Fault>({
        {"empty", {}, "old"},
        {"broken title", "\"Cold\" store\r\n", "old"},
        {"five channels", changed("\r\n2\r\n", "\r\n5\r\n"), "Cold store", 5},
        {"quoted channel count", changed("\r\n2\r\n", "\r\n\"2\"\r\n")},
        {"sample count", changed("\r\n3\r\n", "\r\n3000000000\r\n"), "Cold store", 2},
        {"no value", changed("\r\n4.5\r\n", "\r\n\r\n"), "Cold store", 2, 3, time},
        {"decimal comma", changed("61.2", "61,2"), "Cold store", 2, 3, time, 4.5F},
        {"ends early", cold_store.chopped(7), "Cold store", 2, 3, time, 4.5F},
    });
  }
  void faults() {
    QFETCH(Fault, row);
    Recording recording;
    recording.Title = recording.SampleTimes(0) = QStringLiteral("old");
    recording.ChannelCount = 1;
    recording.SampleCount = 1;
    recording.SampleValues(0, 0) = 7.0F;
    QVERIFY(!read(row.file, recording));
    QCOMPARE(recording.Title, QString::fromLatin1(row.title));
    QCOMPARE(int{recording.ChannelCount}, row.channels);
    QCOMPARE(int{recording.SampleCount}, row.samples);
    QCOMPARE(recording.SampleTimes(0), QString::fromLatin1(row.first_time));
    QCOMPARE(recording.SampleValues(0, 0), row.first_value);
  }

  void reading_any_content_is_bounded_data() {
    constexpr int many = 20'000'000;
    constexpr qint64 huge = qint64{4} * 1024 * 1024 * 1024;
    const QByteArray head = "a,b,4,1,t,C,2,t,C,3,t,C,4,t,C,2000000000\n";
    QByteArray noise(many, Qt::Uninitialized);
    std::uint32_t random = 1;
    for (char& c : noise) c = static_cast<char>((random = random * 1664525U + 1013904223U) >> 24);
    add_rows<Bulk>({
        {"4 GB of nothing", {}, huge},
        {"count of two billion", head},
        {"count of two billion in 4 GB", head + "t,1,2,3,4\n", huge},
        {"no line ends", head + QByteArray(many, '1')},
        {"only line ends", "a,b,0,2000000000\n" + QByteArray(many, '\n')},
        {"only quotes", QByteArray(many, '"')},
        {"only blanks", QByteArray(many, ' ')},
        {"noise", noise},
        {"noise behind a header", head + noise},
    });
  }
  void reading_any_content_is_bounded() {
    QFETCH(Bulk, row);
    const QTemporaryDir folder;
    QFile bulk(folder.filePath(QStringLiteral("run.qlx")));
    QVERIFY(bulk.open(QIODevice::WriteOnly) && bulk.write(row.start) == row.start.size());
    if (row.size > 0) QVERIFY(bulk.resize(row.size));
    bulk.close();
    Recording recording;
    FileHandle file;
    QElapsedTimer timer;
    timer.start();
    file.open_for_reading(bulk.fileName());
    QVERIFY_THROWS_EXCEPTION(RunTimeError, read_recording(file, recording));
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
  }

  // Writing stops at the bound of the arrays with what stands before it in the file; reading such
  // a file stops at the bound, too.
  void counts_beyond_the_recording() {
    struct Counts {
      int channels, samples, lines;
    };
    for (const Counts& counts :
         {Counts{0, 0, 4}, Counts{-2, 3, 7}, Counts{2, -3, 10}, Counts{6, 3, 18},
          Counts{1, 30002, 60009}, Counts{0, 2'000'000'000, 30005}}) {
      Recording recording;
      recording.ChannelCount = static_cast<std::int16_t>(counts.channels);
      recording.SampleCount = counts.samples;
      const QByteArray bytes = written(recording);
      QCOMPARE(int(bytes.count("\r\n")), counts.lines);
      const bool held = counts.channels <= 4 && counts.samples <= Recording::max_samples;
      QCOMPARE(read(bytes + (held ? "" : "\"one\"\r\n2\r\n"), recording), held);
      QCOMPARE(int{recording.ChannelCount}, counts.channels);
      QCOMPARE(int{recording.SampleCount}, counts.samples);
    }
  }

  void handles() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("run.qlx"));
    FileHandle file;
    QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_reading(path));
    QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_reading(folder.path()));
    QVERIFY_THROWS_EXCEPTION(FileError, file.open_for_writing(folder.path()));
    QVERIFY_THROWS_EXCEPTION(FileError, file.read(1));
    QVERIFY_THROWS_EXCEPTION(FileError, file.write("a"));
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
};

const int registered = register_test<TestDataFile>();

#include "test_data_file.moc"
