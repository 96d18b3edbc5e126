#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryFile>

#include "app/errors.h"
#include "app/recording.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "support/runner.h"

namespace {

const QByteArray cold_store =
    "\"Cold store\"\r\n\"Logger 1\"\r\n2\r\n"
    "\"1\"\r\n\"Temperature\"\r\n\"C\"\r\n\"2\"\r\n\"Humidity\"\r\n\"%RH\"\r\n3\r\n"
    "\"2006-05-12 13:45:30\"\r\n4.5\r\n61.2\r\n"
    "\"2006-05-12 13:46:30\"\r\n4.6\r\n61\r\n"
    "\"2006-05-12 13:47:30\"\r\n4.4\r\n60.8\r\n";

QByteArray changed(const char* from, const char* to) {
  return QByteArray(cold_store).replace(from, to);
}

bool read(const QByteArray& bytes, Recording& recording) {
  return stop_at_first_failure([&] { read_recording(bytes.toStdString(), recording); });
}

QByteArray written(const Recording& recording) {
  QTemporaryFile file;
  FileHandle handle;
  handle.open_for_writing(file.open() ? file.fileName() : QString());
  skip_on_error([&] { write_recording(recording, handle); });
  handle.close();
  return file.readAll();
}

QByteArray written_again(const QByteArray& bytes) {
  Recording recording;
  return read(bytes, recording) ? written(recording) : QByteArray("(refused)");
}

}  // namespace

class TestDataFile : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  // Other programs' forms of the same file, and the samples, which are as the program writes them.
  void files_read_back_byte_for_byte() {
    for (const QByteArray& file :
         {cold_store, changed("\r\n", ","), changed("\r\n", "\n"), changed("\"", " "),
          cold_store.chopped(2), cold_store + "\"and more\",\""}) {
      QCOMPARE(written_again(file), cold_store);
    }
    for (const char* name : {"/cold-store.qlx", "/greenhouse.qlx"}) {
      const QByteArray bytes = contents(CORVANE_SAMPLES + QString(name));
      QVERIFY(!bytes.isEmpty() && written_again(bytes) == bytes);
    }
  }

  void a_full_recording_reads_back_the_same() {
    Recording recording;
    recording.Title = "Wand \"Süd\",\r\n冷库 1";
    recording.RecorderName = "\"A\"";
    recording.ChannelCount = 4;
    recording.SampleCount = Recording::max_samples;
    recording.SampleValues(Recording::max_samples - 1, 3) = -0.1F;
    const QByteArray bytes = written(recording);
    QVERIFY(bytes.startsWith("\"Wand \"\"Süd\"\",\r\n冷库 1\"\r\n\"\"\"A\"\"\"\r\n4\r\n\"\"\r\n"));
    QVERIFY(bytes.endsWith("\r\n-0.1\r\n") && written_again(bytes) == bytes);
  }

  // What has replaced the old contents when the fault is met.
  void faults() {
    const auto left = [](const QByteArray& file) {
      Recording recording;
      recording.Title = recording.SampleTimes(0) = recording.ChannelInfo[1][1] = "old";
      recording.ChannelCount = 1;
      recording.SampleCount = 1;
      recording.SampleValues(0, 1) = 7;
      QString text = read(file, recording) ? "read " : "";
      QDebug(&text).noquote() << recording.Title << recording.SampleTimes(0)
                              << recording.ChannelInfo[1][1] << recording.ChannelCount
                              << recording.SampleCount << recording.SampleValues(0, 1);
      return text.trimmed();
    };
    const QString at_value = "Cold store 2006-05-12 13:45:30 Humidity 2 3 ";
    QCOMPARE(left(cold_store), "read " + at_value + "61.2");
    QCOMPARE(left({}), "old old old 1 1 7");
    QCOMPARE(left("\"Cold\" store\r\n"), "old old old 1 1 7");
    QCOMPARE(left(changed("\r\n2\r\n", "\r\n5\r\n")), "Cold store old old 5 1 7");
    QCOMPARE(left(changed("\r\n2\r\n", "\r\n\"2\"\r\n")), "Cold store old old 1 1 7");
    QCOMPARE(left(changed("\r\n3\r\n", "\r\n3000000000\r\n")), "Cold store old Humidity 2 1 7");
    QCOMPARE(left(changed("\r\n61.2\r\n", "\r\n\r\n")), at_value + "7");
    QCOMPARE(left(changed("4.6", "4,6")), at_value + "61.2");
    QCOMPARE(left(cold_store.chopped(7)), at_value + "61.2");
  }

  void reading_any_content_is_bounded() {
    constexpr int many = 20'000'000;
    const QByteArray head = "a,b,4,1,t,C,2,t,C,3,t,C,4,t,C,2000000000\n";
    QByteArray noise(many, Qt::Uninitialized);
    QRandomGenerator(1).fillRange(reinterpret_cast<quint32*>(noise.data()), many / 4);
    for (const QByteArray& start :
         {QByteArray(), head + "t,1,2,3,4\n", head + QByteArray(many, '1'), QByteArray(many, '"'),
          "a,b,0,2000000000\n" + QByteArray(many, '\n'), noise, head + noise}) {
      QTemporaryFile bulk;
      QVERIFY(bulk.open() && bulk.write(start) == start.size());
      QVERIFY(bulk.resize(start.size() < 100 ? qint64{4} << 30 : start.size()));
      Recording recording;
      FileHandle file;
      QElapsedTimer timer;
      timer.start();
      file.open_for_reading(bulk.fileName());
      QVERIFY_THROWS_EXCEPTION(RunTimeError, read_recording(file, recording));
      QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }
  }

  // Writing stops at the bound of the arrays with what stands before it in the file; reading such
  // a file stops at the bound, too.
  void counts_beyond_the_recording() {
    for (const auto& [channels, samples, lines] :
         {std::tuple(-2, 3, 7), {2, -3, 10}, {6, 3, 18}, {1, 30002, 60009}}) {
      Recording recording;
      recording.ChannelCount = static_cast<std::int16_t>(channels);
      recording.SampleCount = samples;
      const QByteArray bytes = written(recording);
      QCOMPARE(bytes.count("\r\n"), lines);
      const bool held = channels <= 4 && samples <= Recording::max_samples;
      QCOMPARE(read(bytes + (held ? "" : "\"one\"\r\n2\r\n"), recording), held);
      QVERIFY(recording.ChannelCount == channels && recording.SampleCount == samples);
    }
  }
};

const int registered = register_test<TestDataFile>();

#include "test_data_file.moc"
