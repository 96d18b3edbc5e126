#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

#include "data/export_command.h"
#include "data/whole_file.h"
#include "support/recordings.h"
#include "support/simulated_window.h"

namespace {

// What the replaced fsync() returns for a file or a folder: 0 or an error.
std::function<int(bool folder)> disk;

// The calls to the office applications, one per line.
struct Calls {
  QStringList fails = {"running"};    // a line that contains one of these throws
  bool no_memory = false;             // what it throws, once there is an application
  std::function<void()> before_line;  // called in the export's thread
  QStringList lines;
  int sheets = 0;

  void write(const QString& line) {
    if (before_line) before_line();
    lines << line;
    for (const QString& text : fails) {
      if (no_memory && line.contains(text) && !line.contains(".App")) throw std::bad_alloc();
      if (line.contains(text)) throw AutomationError("as told");
    }
  }
};

// Records each call, such as "Sheet1.Columns(2).ColumnWidth = 15". An object's name is the path of
// members that leads to it; the result of Add is named by its kind, and a sheet also by a number.
struct NamedObject final : AutomationObject {
  NamedObject(Calls& calls_used, const QString& way) : calls(calls_used), name(way) {}

  AutomationPointer get(std::string_view member, const AutomationArguments& arguments) override {
    return std::make_shared<NamedObject>(calls, path(member, arguments));
  }
  void put(std::string_view member, const AutomationArguments& arguments,
           const AutomationValue& value) override {
    calls.write(path(member, arguments) + " = " + shown(value));
  }
  AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                         const NamedArguments& named) override {
    calls.write(path(member, arguments, named));
    if (member != "Add") return nullptr;
    QString kind = name.section(u'.', -1).chopped(1);
    if (kind == "Worksheet") kind = QStringLiteral("Sheet%1").arg(++calls.sheets);
    return std::make_shared<NamedObject>(calls, kind);
  }

  static QString shown(double value) { return QString::number(value, 'g', 15); }
  static QString shown(const QString& value) { return u'"' + value + u'"'; }
  static QString shown(const AutomationTable& table) {
    QString cells;
    for (std::size_t i = 0; i < table.cells.size(); ++i) {
      cells += shown(table.cells[i]) + ((i + 1) % table.columns == 0 ? u';' : u' ');
    }
    return u'[' + cells + u']';
  }
  template <class... Held>
  static QString shown(const std::variant<Held...>& value) {
    return std::visit([](const auto& held) { return shown(held); }, value);
  }
  QString path(std::string_view member, const AutomationArguments& arguments,
               const NamedArguments& named = {}) const {
    QStringList parts;
    for (const auto& value : arguments) parts << shown(value);
    for (const auto& [key, value] : named) parts << QString::fromLatin1(key) + ":=" + shown(value);
    const QString list = parts.isEmpty() ? QString() : u'(' + parts.join(", ") + u')';
    return name + u'.' + QString::fromLatin1(member) + list;
  }

  Calls& calls;
  QString name;
};

struct RecordingAutomation final : Automation, Calls {
  AutomationPointer running(std::string_view application, const GiveUp&) override {
    return start("running ", QString::fromLatin1(application));
  }
  AutomationPointer create(std::string_view application, const GiveUp&) override {
    return start("create ", QString::fromLatin1(application));
  }
  AutomationPointer start(const char* how, const QString& name) {
    write(how + name);
    return std::make_shared<NamedObject>(*this, name.section(u'.', 0, 0));
  }
};

enum Form { text = 1, document = 2, workbook = 3 };

}  // namespace

extern "C" int fsync(int file) {
  struct stat status {};
  fstat(file, &status);
  errno = disk ? disk(S_ISDIR(status.st_mode)) : 0;
  return errno == 0 ? 0 : -1;
}

// Save As, with office applications that only record the calls.
class TestExport : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    world_ = std::make_unique<SimulatedWindow>();
    office_ = std::make_unique<RecordingAutomation>();
    User::recording = ::many_samples(3);
    disk = nullptr;
  }

  // Texts are written unchanged except for doubled quotes. A negative channel count means none.
  void text_byte_for_byte() {
    QCOMPARE(export_as(text, "run.of.may"), QStringList(""));
    QCOMPARE(main().files.shown, QStringList{"Save As...|*.txt|*.txt|*.doc|*.doc|*.xls|*.xls"});
    QCOMPARE(contents(path("run.txt")),
             contents(CORVANE_EXPECTED "/export.txt").replace('\n', "\r\n"));
    User::recording.Title = "a \"b\", 湿度";
    User::recording.SampleTimes(1) = QString("\"昨天\"").repeated(5000);
    User::recording.SampleValues(1, 0) = std::numeric_limits<float>::max();
    User::recording.SampleValues(1, 1) = -std::numeric_limits<float>::infinity();
    export_as(text);
    QVERIFY(contents(path("run.txt"))
                .contains("\"\"昨天\"\"               340282346638528859811704183484516925440.00   "
                          "    -inf\"\r"));
    User::recording.ChannelCount = -1;
    User::recording.SampleCount = 0;
    export_as(text);
    QCOMPARE(contents(path("run.txt")),
             QByteArray("\"Title：a \"\"b\"\", 湿度\"\r\n\"Channels:-1\"\r\n\"Length: 0\"\r\n"
                        "\"Start Time：\"\r\n\"End Time：\"\r\n\"\"\r\n"
                        "\"Number         Time       \"\r\n"));
  }

  // A failure shows no message and leaves the status bar's text. The next export works.
  void text_fails() {
    QVERIFY(QFile::link("/dev/full", path("full.txt")) && make_file(path("run.txt"), "older"));
    for (const char* name : {"full", "missing/run", "run"}) {
      if (name == QString("run")) User::recording.SampleCount = Recording::max_samples + 1;
      QCOMPARE(export_as(text, name), QStringList("Save As .TXT"));
    }
    QCOMPARE(contents(path("run.txt")), "older");
    User::recording.SampleCount = 1;
    QCOMPARE(export_as(text), QStringList(""));
  }

  // After a failure the file has its older bytes, even one with two names, which is overwritten in
  // place. An error of the folder's fsync() is not a failure.
  void failing_disk() {
    const QString run = path("run.txt");
    for (const bool linked : {false, true}) {
      QVERIFY(make_file(run, "older") && (geteuid() != 0 || !chown(qPrintable(run), 1, 1)));
      if (linked) QCOMPARE(link(qPrintable(run), qPrintable(path("same"))), 0);
      disk = [](bool folder) { return folder ? 0 : EIO; };
      QVERIFY_THROWS_EXCEPTION(FileError, write_whole_file(run, "new"));
      QCOMPARE(contents(run), "older");
      disk = [](bool folder) { return folder ? EIO : 0; };
      write_whole_file(run, "new");
      QVERIFY(contents(run) == "new" && (geteuid() != 0 || QFileInfo(run).ownerId() == 1));
    }
    QCOMPARE(contents(path("same")), "new");
  }

  void call_by_call() {
    QCOMPARE(export_as(workbook), QStringList({"1 1%", "2 2%", "3 3%", "99 99%", "0 ", ""}));
    QCOMPARE(export_as(document), QStringList({"1 1%", "99 99%", "0 ", ""}));
    const QString lines = office_->lines.join(u'\n').replace(u'\r', "<CR>") + u'\n';
    QCOMPARE(QString(lines).remove(main().folder.path() + u'/').toUtf8(),
             contents(CORVANE_EXPECTED "/workbook-calls.txt") +
                 contents(CORVANE_EXPECTED "/document-calls.txt"));
  }

  // Wide lines lie on landscape pages.
  void wide_pages() {
    User::recording.ChannelInfo[1].fill(QString(60, 'n'));
    for (const Form form : {document, workbook}) export_as(form);
    QCOMPARE(office_->lines.filter("Orientation"),
             QStringList({"Document.PageSetup.Orientation = 1", "Sheet1.PageSetup.Orientation = 2",
                          "Sheet2.PageSetup.Orientation = 2"}));
  }

  // A failure leaves no document open. It quits a word processor that was started, but not the
  // user's own. Status bar and progress stay.
  void fails() {
    const char* close = "Workbook.close(SaveChanges:=0)";
    const char* quit = "Document.Close(SaveChanges:=0)\nWord.Quit";
    for (const auto& [at, form, runs, ends] :
         {std::tuple("create", workbook, false, ""),
          {"Workbooks.Add", workbook, true, ""},
          {"Worksheets.Add", workbook, true, close},
          {"SaveAs(filename", workbook, true, close},
          {"Documents.Add", document, false, "Word.Quit"},
          {"TypeText", document, false, quit},
          {"SaveAs", document, true, "Document.Close(SaveChanges:=0)"}}) {
      for (const bool no_memory : {false, true}) {
        office_ = std::make_unique<RecordingAutomation>();
        office_->fails = {at, runs ? at : "running"};
        office_->no_memory = no_memory;
        const QStringList log = export_as(form);
        QCOMPARE(log.last(), form == document ? "Save As .Word" : "Save As .EXCEL");
        QVERIFY(main().window->Text1->text().endsWith(u'%'));
        QCOMPARE(office_->lines[1].startsWith("create"), !runs);
        QCOMPARE(office_->lines.join(u'\n').section(at, 1).section(u'\n', 1), ends);
      }
    }
    AutomationPlugin missing(main().folder.path());
    ExportRecording(*main().window, missing);
    main().files.choices = {path("run")};
    ExportRecording(*main().window, missing);
    QCOMPARE(main().window->Text1->text(), "1%");
  }

  // An export uses the Recording as it was, even if a command changes it. A further document waits.
  // When the program ends, the current document is closed, the waiting one is dropped, and nothing
  // is written to the closing main window.
  void meanwhile() {
    User::recording = ::many_samples(Recording::max_samples);
    QSemaphore go_on, amid_samples;
    office_->before_line = [&] {
      if (office_->lines.size() == 2) go_on.acquire();
      if (office_->lines.size() == 40) amid_samples.release();
      if (office_->lines.size() >= 40) QThread::msleep(1);
    };
    world_->clock.after(10, [&] {
      User::recording.SampleCount = 0;
      main().files.choices = {path("next")};
      ExportRecording(*main().window, *office_);
      go_on.release();
      amid_samples.tryAcquire(1, 10'000);
      main().window->close();
    });
    QVERIFY(!export_as(workbook).contains("0 "));
    QVERIFY(office_->lines.filter("Value").size() > 2);
    QCOMPARE(office_->lines.last(), "Workbook.close(SaveChanges:=0)");
    QVERIFY(office_->lines.size() < 150);
  }

 private:
  MainWindow& main() { return world_->main; }
  QString path(const char* name) { return main().folder.filePath(name); }
  // Runs the export. Returns what the progress bar showed, then the first panel's final text.
  QStringList export_as(Form form, const char* name = "run") {
    main().files.choices = {path(name)};
    main().files.choose_filter = form;
    frmmdi& window = *main().window;
    window.set_progress(0, {});
    QStringList log;
    const auto progress = [&](const QString& percent) {
      log << QString::number(window.PrgB1->value()) + u' ' + percent;
    };
    const auto shown = connect(window.Text1, &QLineEdit::textChanged, this, progress);
    ExportRecording(window, *office_);
    disconnect(shown);
    return log << window.Sts1[0]->text();
  }

  std::unique_ptr<SimulatedWindow> world_;
  std::unique_ptr<RecordingAutomation> office_;
};

const int registered = register_test<TestExport>();

#include "test_export.moc"
