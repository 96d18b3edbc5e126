#include <QDir>
#include <QProcess>

#include "app/errors.h"
#include "app/user.h"
#include "data/data_commands.h"
#include "data/file_handle.h"
#include "support/runner.h"
#include "support/simulated_window.h"
#include "views/frmdisplay.h"

namespace {

const QByteArray one_sample =
    "\"New\"\r\n\"R\"\r\n1\r\n\"3\"\r\n\"t\"\r\n\"C\"\r\n1\r\n\"now\"\r\n5.5\r\n";
const QByteArray old_saved = "\"old\"\r\n\"\"\r\n0\r\n2\r\n\"\"\r\n\"\"\r\n";
// Messages and the first panel's text, then what is to be had.
const QString opened = "|display|commands";
const QString read_error = "Corvane: File Read Error|";
const QString save_error = "Corvane: Save File Error|Save File";

}  // namespace

class TestDataCommands : public QObject {
  Q_OBJECT

  QString path(const QString& name) const { return world_->main.folder.filePath(name); }
  // What the command leads to when this name is chosen in the file dialog.
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
    QVERIFY(make_file(path("run.qlx"), one_sample) && make_file(path("pipe.txt")));
    // Opening a pipe that nobody serves would wait for ever.
    QVERIFY(QDir().mkdir(path("folder.qlx")) && !QProcess::execute("mkfifo", {path("pipe.qlx")}));
  }
  void cleanup() {
    skip_on_error([] { file_handle_1().close(); });
  }

  // The name is cut at its first dot; that the chosen file itself exists is all that is asked.
  void open() {
    QCOMPARE(done(OpenDataFile, {}), "before");
    for (const char* name : {"none.qlx", "run", "folder.qlx"}) {
      QCOMPARE(done(OpenDataFile, name), "Corvane: File Lose|before");
    }
    QCOMPARE(User::recording.Title, "old");
    QVERIFY(make_file(path("run.other")));
    QCOMPARE(done(OpenDataFile, "run.other"), opened);
    QCOMPARE(world_->main.files.shown.last(), "Open File|*.qlx|*.qlx");
    QVERIFY(User::recording.Title == "New" && User::recording.SampleValues(0, 0) == 5.5F);
    QVERIFY(User::recording.ViewCount == 1 && !file_handle_1().is_open());
    QCOMPARE(done(CloseDataFile, {}), "");
    QVERIFY(User::recording.SampleCount == 0 && User::recording.Title == "New");
  }

  // Nothing closes the handle, so no later open or save gets through; a handle that could not be
  // opened at all bars nothing.
  void a_failed_open_bars_handle_1() {
    QVERIFY(make_file(path("five.qlx"), "\"New\"\r\n\"R\"\r\n5\r\n"));
    QCOMPARE(done(OpenDataFile, "pipe.txt"), read_error);
    QCOMPARE(done(OpenDataFile, "run.qlx"), opened);
    frmmdi& window = *world_->main.window;
    const auto unloading = [&] { QCOMPARE(window.Sts1[0]->text(), "Open File"); };
    connect(window.loaded_display(), &frmdisplay::unloading, &window, unloading);
    QCOMPARE(done(OpenDataFile, "five.qlx"), read_error);
    QVERIFY(User::recording.ChannelCount == 5 && User::recording.SampleCount == 1);
    QCOMPARE(done(OpenDataFile, "run.qlx"), read_error);
    QCOMPARE(done(SaveDataFile, "new.qlx"), save_error);
    QCOMPARE(contents(path("new.qlx")), "(no file)");
  }

  void save() {
    const QString question = "Corvane: File Exists ，Overwrite?|";
    QCOMPARE(done(SaveDataFile, {}), "before");
    // No shows the dialog again, which is then cancelled.
    QCOMPARE(done(SaveDataFile, "run.qlx"), question + "before");
    QVERIFY(world_->main.files.shown == QStringList(3, "Save File|*.qlx|*.qlx"));
    QCOMPARE(contents(path("run.qlx")), one_sample);
    world_->main.messages.answers = {true};
    QCOMPARE(done(SaveDataFile, "run.qlx"), question);
    QCOMPARE(contents(path("run.qlx")), old_saved);
    // By another name that is cut to this one it is overwritten unasked.
    QVERIFY(make_file(path("run.qlx"), "precious"));
    QCOMPARE(done(SaveDataFile, "run.1.qlx"), "");
    QCOMPARE(contents(path("run.qlx")), old_saved);
    for (const char* name : {"none/run", "folder", "pipe"}) {
      QCOMPARE(done(SaveDataFile, name), save_error);
      QVERIFY(!file_handle_1().is_open());
    }
    QVERIFY(QFile::link("/dev/full", path("full.qlx")));
    QCOMPARE(done(SaveDataFile, "full"), save_error);
    QVERIFY(file_handle_1().is_open());
  }
};

const int registered = register_test<TestDataCommands>();

#include "test_data_commands.moc"
