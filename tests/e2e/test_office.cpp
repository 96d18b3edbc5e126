#include <sys/mount.h>

#include "base/clock.h"
#include "base/errors.h"
#include "data/file_handle.h"
#include "device/qt_serial_port.h"
#include "support/main_window.h"
#include "support/office_suite.h"
#include "support/recordings.h"

namespace {

// How long the replaced fsync() takes for the next file, and whether it is running.
std::atomic<unsigned long> disk_ms = 0;
std::atomic<bool> disk_works = false;

// A disk with a size of `kib` KiB.
struct SmallDisk {
  SmallDisk(const QString& folder, int kib) : path(folder.toLocal8Bit()) {
    QDir().mkpath(folder);
    const QByteArray options = "size=" + QByteArray::number(kib) + "k";
    mounted = mount("none", path.constData(), "tmpfs", 0, options.constData()) == 0;
  }
  ~SmallDisk() { umount2(path.constData(), MNT_DETACH); }
  QByteArray path;
  bool mounted;
};

}  // namespace

extern "C" int fsync(int) {
  disk_works = true;
  QThread::msleep(disk_ms.exchange(0));
  disk_works = false;
  return 0;
}

// The exports through the real office suite. The suite opens the results again, and the tests
// compare them with the text export.
class TestOffice : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase() {
    if (!OfficeSuite::installed()) QSKIP("LibreOffice or its SDK is not installed.");
  }

  void init() {
    folder_ = std::make_unique<QTemporaryDir>("/tmp/corvane-test-XXXXXX");
    clock_ = std::make_unique<SystemClock>();
    start_program();
    User::recording = many_samples(1201);
    User::recording.ChannelCount = 4;
    User::recording.ChannelInfo = {{{"1", "2", "3", "4"},
                                    {"=湿度", "+b", "<c>", "dddddddddddd"},
                                    {"%RH", "C", "%RH", "C"},
                                    {}}};
  }

  void cleanup() {
    main_.reset();
    suite_.end();
  }

  // A word processor that was started ends with all its processes, whether the save worked or not.
  void document() {
    QVERIFY(QDir().mkdir(path("run.doc")));
    export_as(word);
    QCOMPARE(panel() + main_->window->Text1->text(), QStringLiteral("Save As .Word99%"));
    nothing_is_left();
    QVERIFY(QDir().rmdir(path("run.doc")));
    export_as(word);
    QCOMPARE(panel() + main_->window->Text1->text(), QString());
    nothing_is_left();
    const QByteArray written = contents(path("run.doc"));
    // A binary document with the font "Courier ".
    QVERIFY(written.startsWith(hex("d0cf11e0a1b11ae1")));
    QVERIFY(written.contains(hex("43006f00750072006900650072002000")));
    QVERIFY(is_landscape("run.doc", "fodt"));
    QVERIFY(OfficeSuite::convert(path("run.doc"), "txt:Text (encoded):UTF8,LF", folder_->path()));
    const QByteArray lines = contents(path("run.txt")).mid(3);  // without the mark of UTF-8
    QCOMPARE(lines, text_lines().join('\n').replace(",Min.:", ",Min:") + '\n');
  }

  // The spreadsheet application keeps running. The document export leaves it running, and it ends
  // with the program.
  void workbook_and_then_a_document() {
    export_as(workbook);
    const auto running = suite_.processes();
    for (const Form form : {word, workbook}) {
      export_as(form);
      QCOMPARE(panel(), QString());
      QVERIFY(!running.isEmpty() && suite_.processes() == running);
    }
    QVERIFY(program_end_ms() < 2000);
    nothing_is_left();
    start_program();
    QVERIFY(is_landscape("run.xls", "fods"));
    check_workbook(false);
    check_workbook(true);
  }

  // A stuck suite is given up and ended, and the older file stays. Meanwhile a text export works; a
  // further workbook waits until a new suite makes it.
  void stuck_suite() {
    User::recording = many_samples(Recording::max_samples);
    QVERIFY(make_file(path("run.xls"), "older"));
    QString text_panel;
    amid_export([this] { suite_.signal(SIGSTOP); },
                [&] {
                  export_as(text);
                  text_panel = panel();
                  User::recording.SampleCount = 5;
                  export_as(workbook, "next");
                });
    export_as(workbook);
    QCOMPARE(text_panel, "Save As .EXCEL");
    QVERIFY(contents(path("run.txt")).size() > 1'000'000);
    QCOMPARE(contents(path("run.xls")), "older");
    QVERIFY(panel().isEmpty() && QFile::exists(path("next.xls")));
    QCOMPARE(suite_.signal(0), 2);
  }

  // A suite that is slow, but not stuck: it answers only after seconds.
  void slow_suite() {
    QTimer slowness;
    connect(&slowness, &QTimer::timeout, &slowness, [this] {
      suite_.signal(SIGCONT);
      QThread::msleep(20);
      suite_.signal(SIGSTOP);
    });
    amid_export([&] { slowness.start(600); }, [] {});
    export_as(word);
    slowness.stop();
    suite_.signal(SIGCONT);
    QVERIFY(panel().isEmpty() && QFile::exists(path("run.doc")));
  }

  // A suite with a document of the user's keeps running, whoever started it, even when it is stuck
  // and given up. No pipe into it stays open.
  void suite_with_the_users() {
    const auto pipes = [] {
      return QDir("/tmp").entryList({"OSL_PIPE_*_corvane_*"}, QDir::System);
    };
    const QStringList pipes_before = pipes();
    for (const auto& [ours, stuck] : {std::pair(false, true), {true, true}, {true, false}}) {
      if (ours) export_as(workbook, "first");
      const QString mine = open_as_user();
      const auto running = suite_.processes();
      if (stuck) suite_.signal(SIGSTOP);
      if (ours) {
        QVERIFY(program_end_ms() < 2000);
        start_program();
      } else {
        export_as(word);
        QCOMPARE(panel(), "Save As .Word");
      }
      suite_.signal(SIGCONT);
      QTest::qWait(1000);
      export_as(word);
      QVERIFY(panel().isEmpty() && QFile::exists(path("run.doc")));
      QVERIFY(OfficeSuite::is_open(mine) && suite_.processes().contains(running.last()));
      if (!stuck) QTRY_COMPARE(pipes(), pipes_before);
      suite_.end();
    }
  }

  // A slow disk does not count as a stuck suite. An unfinished file at program end changes nothing.
  void slow_disk() {
    disk_ms = 12'000;
    export_as(word);
    QCOMPARE(panel(), "");
    const QByteArray written = contents(path("run.doc"));
    disk_ms = 4000;
    User::recording.Title = "other";
    quit_when([] { return disk_works.load(); }, word);
    QVERIFY(disk_works && QDir(folder_->path()).entryList({"run.doc*"}) == QStringList("run.doc"));
    QTest::qWait(4000);
    QVERIFY(!disk_works && !written.isEmpty() && contents(path("run.doc")) == written);
  }

  // A full disk keeps the older file and nothing of the new one. Only a data file that could not be
  // saved is left as far as there was room. CORVANE_ALL_DISKS=1 tries all disk sizes.
  void full_disks() {
    const QByteArray older(3000, 'o');
    const char* const told[] = {"Corvane: Save File Error|Save File|", "Save As .TXT|",
                                "Save As .Word|99%", "Save As .EXCEL|99%"};
    const QList<int> sizes = qEnvironmentVariableIsSet("CORVANE_ALL_DISKS")
                                 ? QList<int>{4, 8, 16, 32, 64, 128, 256, 512, 1024}
                                 : QList<int>{8, 128};
    for (const int size : sizes) {
      SmallDisk disk(path("disk"), size);
      if (!disk.mounted) QSKIP("Small disks can only be made by root.");
      for (const auto& [form, name] : {std::pair(data_file, "disk/run.qlx"),
                                       {text, "disk/run.txt"},
                                       {word, "disk/run.doc"},
                                       {workbook, "disk/run.xls"}}) {
        for (const bool with_older : {false, true}) {
          if (with_older) make_file(path(name), older);
          const QString said = told_by(form, "disk/run");
          const QByteArray left = contents(path(name));
          const bool whole = said == "|" && left != older;
          const bool untouched =
              with_older ? left == older : form == data_file || !QFile::exists(path(name));
          QVERIFY(whole || (untouched && said.startsWith(told[form])));
          QVERIFY(QDir(path("disk")).entryList(QDir::Files | QDir::Hidden).size() <= 1);
          QFile::remove(path(name));
        }
      }
    }
  }

  // Without room for its temporary files the suite delivers an empty document and reports no error.
  void suite_without_room() {
    User::recording = many_samples(1201);
    export_as(workbook, "first");
    suite_.end();
    for (const int size : {64, 320}) {
      const SmallDisk disk(qEnvironmentVariable("TMPDIR"), size);
      if (!disk.mounted) QSKIP("Small disks can only be made by root.");
      for (const Form form : {word, workbook}) {
        const bool said = told_by(form, "run").startsWith("Save As");
        const QString name = path(form == word ? "run.doc" : "run.xls");
        QVERIFY(said ? !QFile::exists(name) : QFileInfo(name).size() > 175'000);
        QFile::remove(name);
      }
      suite_.end();
    }
  }

  void program_ends_while_the_suite_starts() {
    quit_when([this] { return !suite_.processes().isEmpty(); }, workbook);
    QVERIFY(!QFile::exists(path("run.xls")));
  }

  // The windows respond until the program ends in the middle of an export.
  void program_ends_amid_the_samples() {
    User::recording = many_samples(Recording::max_samples);
    const auto amid = [this] { return main_->window->PrgB1->value() >= 50; };
    QVERIFY(quit_when(amid, word) > 20);
    start_program();
    quit_when(
        [&] {
          if (amid()) suite_.signal(SIGSTOP);
          return amid();
        },
        word);
  }

 private:
  enum Form { data_file = 0, text = 1, word = 2, workbook = 3 };

  QString path(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  QString panel() const { return main_->window->Sts1[0]->text(); }
  void no_process_is_left() {
    QTRY_COMPARE_WITH_TIMEOUT(suite_.processes(), QList<qint64>(), OfficeSuite::patience_ms);
  }
  void nothing_is_left() {
    no_process_is_left();
    QCOMPARE(suite_.left_files(), QString());
  }
  void start_program() { main_ = std::make_unique<MainWindow>(port_, *clock_); }
  // Ends the program and returns how long that takes.
  qint64 program_end_ms() {
    QElapsedTimer timer;
    timer.start();
    main_.reset();
    return timer.elapsed();
  }
  // Returns how often the window could check `now`.
  int quit_when(const std::function<bool()>& now, Form form) {
    int looks = 0;
    QElapsedTimer ending;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
      ++looks;
      if (ending.isValid() || !now()) return;
      ending.start();
      main_->run(QStringLiteral("Quit"));
    });
    timer.start(5);
    export_as(form);
    program_end_ms();
    const qint64 time = ending.elapsed();
    [&] { QVERIFY2(time < 2200, qPrintable(QString::number(time))); }();
    no_process_is_left();
    return looks;
  }
  // Calls `first` when the next export is half done, and `then` a little later.
  void amid_export(const std::function<void()>& first, const std::function<void()>& then) {
    auto* timer = new QTimer(main_->window.get());
    connect(timer, &QTimer::timeout, this, [this, timer, first, then] {
      if (main_->window->PrgB1->value() < 50) return;
      timer->stop();
      first();
      QTimer::singleShot(500, this, then);
    });
    timer->start(5);
  }
  QString open_as_user() {
    const QString mine = path("mine.txt");
    QFile(mine).open(QIODevice::WriteOnly);
    if (suite_.processes().isEmpty()) {
      OfficeSuite::open(mine);
    } else {
      QProcess::execute(QStringLiteral(CORVANE_OFFICE_USER), {mine});
    }
    (void)QTest::qWaitFor([&] { return OfficeSuite::is_open(mine); }, OfficeSuite::patience_ms);
    return mine;
  }
  // The text export's lines without the quotes around them.
  QByteArrayList text_lines() {
    export_as(text);
    return contents(path("run.txt")).mid(1).chopped(3).replace("\"\r\n\"", "\n").split('\n');
  }
  // Asks the suite for the pages of what it has written.
  bool is_landscape(const char* name, const char* form) const {
    return OfficeSuite::convert(path(name), form, folder_->path()) &&
           contents(path("run.") + form).contains("print-orientation=\"landscape\"");
  }
  // Compares the numbers as the workbook holds or as it shows them. Texts are always in quotes.
  void check_workbook(bool as_shown) {
    const QByteArray every_sheet = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,true,true,";
    const QByteArray form = every_sheet + (as_shown ? "true" : "false") + ",false,false,-1";
    QVERIFY(OfficeSuite::convert(path("run.xls"), form, folder_->path()));
    const QByteArrayList lines = text_lines();
    const QByteArray heads = R"h("=湿度(%RH)","+b(C)","<c>(%RH)","dddddddddddd(C)")h";
    QByteArrayList whole_times;
    QByteArrayList halved_times = {R"("Number","Date","Time",)" + heads};
    for (const QByteArray& line : lines.first(9)) whole_times << '"' + line + "\",,,,,";
    whole_times << ",,,,,"
                << R"("Number","Time",)" + heads;
    for (const QByteArray& line : lines.mid(11)) {
      const QByteArrayList fields = line.simplified().split(' ');
      QByteArray values;
      for (const QByteArray& value : fields.mid(3)) {
        values += ',' + (as_shown ? '"' + value + " \"" : QByteArray::number(value.toDouble()));
      }
      const QByteArray date = fields[0] + ",\"" + fields[1];
      whole_times << date + ' ' + fields[2] + '"' + values;
      // The cells are numbers, shown as a date and a time.
      const auto time = QTime::fromString(fields[2], Qt::ISODate);
      halved_times << fields[0] + ',' + fields[1] + ',' +
                          (as_shown ? fields[2] : time.toString("hh:mm:ss AP").toLatin1()) + values;
    }
    QCOMPARE(contents(path("run-Readings.csv")).split('\n'), whole_times << "");
    QCOMPARE(contents(path("run-Date and Time.csv")).split('\n'), halved_times << "");
    QCOMPARE(QDir(folder_->path()).entryList({"*.csv"}).size(), 2);
  }
  void export_as(Form form, const char* name = "run") {
    main_->files.choices = {path(name)};
    main_->files.choose_filter = form;
    main_->run(form == data_file ? QStringLiteral("save") : QStringLiteral("outputs"));
  }
  // Saves or exports the Recording; returns the messages, status bar and progress afterwards.
  QString told_by(Form form, const char* name) {
    skip_on_error([] { file_handle_1().close(); });
    main_->messages.shown.clear();
    main_->window->set_panel(1, {});
    main_->window->set_progress(0, {});
    export_as(form, name);
    return (main_->messages.shown << panel() << main_->window->Text1->text()).join(u'|');
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<SystemClock> clock_;
  QtSerialPort port_;
  std::unique_ptr<MainWindow> main_;
  OfficeSuite suite_;
};

namespace {
const int registered = register_test<TestOffice>();
}

#include "test_office.moc"
