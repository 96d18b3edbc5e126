// The data file, and the commands that open, save and close it.

#include "base/errors.h"
#include "data/data_commands.h"
#include "data/data_file.h"
#include "data/file_handle.h"
#include "support/simulated_window.h"
#include "views/frmdisplay.h"

namespace {

const QByteArray cold_store =
    "\"Cold store\"\r\n\"Logger 1\"\r\n2\r\n"
    "\"1\"\r\n\"Temperature\"\r\n\"C\"\r\n\"2\"\r\n\"Humidity\"\r\n\"%RH\"\r\n3\r\n"
    "\"2006-05-12 13:45:30\"\r\n4.5\r\n61.2\r\n"
    "\"2006-05-12 13:46:30\"\r\n4.6\r\n61\r\n"
    "\"2006-05-12 13:47:30\"\r\n4.4\r\n60.8\r\n";
// The messages, the first panel's text, then which window and commands are available.
const QString opened = "|display|commands";
const QString read_error = "Corvane: File Read Error|";
const QString save_error = "Corvane: Save File Error|Save File";

QByteArray changed(const char* from, const char* to) {
  return QByteArray(cold_store).replace(from, to);
}

bool read(const QByteArray& bytes, Recording& recording) {
  return stop_at_first_failure([&] { read_recording(bytes.toStdString(), recording); });
}

}  // namespace

class TestDataFile : public QObject {
  Q_OBJECT

  QString path(const QString& name) const { return world_->main.folder.filePath(name); }
  QByteArray written(const Recording& recording) const {
    FileHandle handle;
    handle.open_for_writing(path("written"));
    write_recording(recording, handle);
    handle.close();
    return contents(path("written"));
  }
  QByteArray written_again(const QByteArray& bytes) const {
    Recording recording;
    return read(bytes, recording) ? written(recording) : QByteArray("(refused)");
  }
  // Runs the command and chooses `name` in the file dialog. Returns the outcome in words.
  QString done(void (*command)(Shell&), const QString& name) {
    MainWindow& main = world_->main;
    main.messages.shown.clear();
    main.files.choices = {name.isEmpty() ? name : path(name)};
    main.files.file_name = "left.qlx";  // by an earlier command
    main.window->set_panel(1, "before");
    command(*main.window);
    return (main.messages.shown << main.window->Sts1[0]->text()).join(u'|') +
           (main.window->loaded_display() ? "|display" : "") +
           (main.window->menu_entry("save")->isEnabled() ? "|commands" : "");
  }

  std::unique_ptr<SimulatedWindow> world_;

 private Q_SLOTS:
  void init() {
    world_ = std::make_unique<SimulatedWindow>();
    User::recording = Recording();
    User::recording.Title = "old";
    User::recording.SampleCount = 2;
    QVERIFY(make_file(path("run.qlx"), cold_store) && make_file(path("pipe.txt")));
    // Opening a pipe without a writer would block for ever.
    QVERIFY(QDir().mkdir(path("folder.qlx")) && !QProcess::execute("mkfifo", {path("pipe.qlx")}));
  }
  void cleanup() {
    skip_on_error([] { file_handle_1().close(); });
  }

  // Other programs' forms of the same file read the same; the samples are written back unchanged.
  void files_read_back_byte_for_byte() {
    for (const QByteArray& file :
         {cold_store, changed("\r\n", ","), changed("\r\n", "\n"), changed("\"", " "),
          cold_store.chopped(2), cold_store + "\"and more\",\"", "\xEF\xBB\xBF" + cold_store}) {
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

  // A fault at any field: the fields before it have replaced the old contents, the rest has not.
  void faults() {
    const QByteArray old = QByteArray(cold_store).replace("1", "7").replace("e", "o");
    const QByteArrayList old_lines = old.split('\n');
    const QByteArrayList lines = cold_store.split('\n');
    for (const QByteArray fault : {"", "\"a\"b\r\n"}) {
      for (int n = 0; n < lines.size() - 1; ++n) {
        Recording recording;
        QVERIFY(read(old, recording));
        QVERIFY(!read(QByteArrayList(lines.first(n) << fault).join('\n'), recording));
        QCOMPARE(written(recording), (lines.first(n) + old_lines.mid(n)).join('\n'));
      }
    }
  }

  void reading_any_content_is_bounded() {
    constexpr int many = 20'000'000;
    const QByteArray head = "a,b,4,1,t,C,2,t,C,3,t,C,4,t,C,2000000000\n";
    QByteArray noise(many, Qt::Uninitialized);
    QRandomGenerator(1).fillRange(reinterpret_cast<quint32*>(noise.data()), many / 4);
    for (const QByteArray& start :
         {QByteArray(), head + "t,1,2,3,4\n", head + QByteArray(many, '1'), QByteArray(many, '"'),
          "a,b,0,2000000000\n" + QByteArray(many, '\n'), noise, head + noise}) {
      QVERIFY(make_file(path("bulk"), start));
      if (start.size() < 100) QVERIFY(QFile::resize(path("bulk"), qint64{4} << 30));
      Recording recording;
      FileHandle file;
      file.open_for_reading(path("bulk"));
      QVERIFY_THROWS_EXCEPTION(RunTimeError, read_recording(file, recording));
    }
  }

  // The name is cut at its first dot, but only the uncut name must exist.
  void open() {
    QCOMPARE(done(OpenDataFile, {}), "before");
    for (const char* name : {"none.qlx", "run", "folder.qlx"}) {
      QCOMPARE(done(OpenDataFile, name), "Corvane: File Lose|before");
    }
    QCOMPARE(User::recording.Title, "old");
    QVERIFY(make_file(path("run.other")));
    QCOMPARE(done(OpenDataFile, "run.other"), opened);
    QCOMPARE(world_->main.files.shown.last(), "Open File|*.qlx|*.qlx");
    QCOMPARE(written(User::recording), cold_store);
    QVERIFY(User::recording.ViewCount == 3 && !file_handle_1().is_open());
    QCOMPARE(done(CloseDataFile, {}), "");
    QVERIFY(User::recording.SampleCount == 0 && User::recording.Title == "Cold store");
  }

  // Nothing closes the handle after a read error, so every later open or save fails. A file that
  // cannot be opened at all blocks nothing.
  void a_failed_open_bars_handle_1() {
    QVERIFY(make_file(path("five.qlx"), changed("\r\n2\r\n", "\r\n5\r\n")));
    QCOMPARE(done(OpenDataFile, "pipe.txt"), read_error);
    QCOMPARE(done(OpenDataFile, "run.qlx"), opened);
    frmmdi& window = *world_->main.window;
    const auto unloading = [&] { QCOMPARE(window.Sts1[0]->text(), "Open File"); };
    connect(window.loaded_display(), &frmdisplay::unloading, &window, unloading);
    QCOMPARE(done(OpenDataFile, "five.qlx"), read_error);
    QVERIFY(User::recording.ChannelCount == 5 && User::recording.ChannelInfo[0][2].isEmpty());
    QCOMPARE(done(OpenDataFile, "run.qlx"), read_error);
    QCOMPARE(done(SaveDataFile, "new.qlx"), save_error);
    QCOMPARE(contents(path("new.qlx")), "(no file)");
  }

  void save() {
    const QString question = "Corvane: File Exists ，Overwrite?|";
    QCOMPARE(done(SaveDataFile, {}), "before");
    // "No" shows the dialog again, and the test then cancels it.
    QCOMPARE(done(SaveDataFile, "run.qlx"), question + "before");
    QVERIFY(world_->main.files.shown == QStringList(3, "Save File|*.qlx|*.qlx"));
    QCOMPARE(contents(path("run.qlx")), cold_store);
    world_->main.messages.answers = {true};
    QCOMPARE(done(SaveDataFile, "run.qlx"), question);
    QCOMPARE(contents(path("run.qlx")), written(User::recording));
    // A name that is cut to this one overwrites the file without a question.
    QVERIFY(make_file(path("run.qlx"), "precious"));
    QCOMPARE(done(SaveDataFile, "run.1.qlx"), "");
    QCOMPARE(contents(path("run.qlx")), written(User::recording));
    for (const char* name : {"none/run", "folder", "pipe"}) {
      QCOMPARE(done(SaveDataFile, name), save_error);
      QVERIFY(!file_handle_1().is_open());
    }
    QVERIFY(QFile::link("/dev/full", path("full.qlx")));
    QCOMPARE(done(SaveDataFile, "full"), save_error);
    QVERIFY(file_handle_1().is_open());
    // A save that fails leaves no temporary file in the folder.
    file_handle_1().close();
    User::recording.SampleCount = Recording::max_samples + 1;
    QCOMPARE(done(SaveDataFile, "run"), save_error);
    const auto files = QDir("/proc/self/fd").entryInfoList();
    for (const auto& file : files) QVERIFY(!file.symLinkTarget().startsWith(path("")));
    // Where there was no file, what was written before the failure stays.
    file_handle_1().close();
    QCOMPARE(done(SaveDataFile, "part"), save_error);
    const QByteArray part = contents(path("part.qlx"));
    QVERIFY(part.startsWith("\"old\"\r\n") && part.count('\n') == 4 + Recording::max_samples);
  }
};

const int registered = register_test<TestDataFile>();

#include "test_data_file.moc"
