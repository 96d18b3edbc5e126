#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "app/errors.h"
#include "app/user.h"
#include "data/data_commands.h"
#include "data/file_handle.h"
#include "support/fake_shell.h"
#include "support/runner.h"

namespace {

const QByteArray one_sample =
    "\"New\"\r\n\"R\"\r\n1\r\n\"3\"\r\n\"t\"\r\n\"C\"\r\n1\r\n\"now\"\r\n5.5\r\n";
const QByteArray old_saved = "\"old\"\r\n\"\"\r\n0\r\n2\r\n\"\"\r\n\"\"\r\n";
const QStringList read_error = {"panel 1: Open File", "unload display", "data commands off",
                                "panel 1: ", "box Corvane: File Read Error"};
const QStringList save_error = {"panel 1: Save File", "box Corvane: Save File Error"};

}  // namespace

class TestDataCommands : public QObject {
  Q_OBJECT

  QString path(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  void make_file(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }
  QByteArray contents(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
  }
  // What the command does when `chosen` is picked in the file dialog.
  QStringList done(void (*command)(Shell&), const QString& chosen) {
    shell_->log.clear();
    shell_->scripted_dialog.choices = {chosen};
    shell_->scripted_dialog.file_name = path("run.qlx");  // what an earlier command left there
    command(*shell_);
    return shell_->log;
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<FakeShell> shell_;

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    shell_ = std::make_unique<FakeShell>();
    User::recording = Recording();
    User::recording.Title = QStringLiteral("old");
    User::recording.SampleCount = 2;
    User::recording.ViewCount = 128;
    QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("folder.qlx")));
  }
  void cleanup() {
    skip_on_error([] { file_handle_1().close(); });
  }

  // The name is cut at its first dot; that the chosen file itself exists is all that is asked.
  void open() {
    make_file("run.qlx", one_sample);
    make_file("run.other", "");
    QCOMPARE(done(OpenDataFile, path("run.other")),
             (QStringList{"panel 1: Open File", "unload display", "show display",
                          "data commands on", "panel 1: "}));
    QCOMPARE(shell_->scripted_dialog.shown, QStringList{"Open File|*.qlx|*.qlx"});
    QCOMPARE(User::recording.Title, "New");
    QCOMPARE(User::recording.SampleValues(0, 0), 5.5F);
    QCOMPARE(User::recording.ViewCount, 1);
    QVERIFY(!file_handle_1().is_open());
  }

  void open_without_a_file() {
    make_file("run.qlx", one_sample);
    QCOMPARE(done(OpenDataFile, {}), QStringList());
    for (const char* name : {"none.qlx", "run", "folder.qlx"}) {
      QCOMPARE(done(OpenDataFile, path(name)), QStringList{"box Corvane: File Lose"});
    }
    QCOMPARE(User::recording.Title, "old");
  }

  void open_fails_after_five_channels() {
    make_file("run.qlx", "\"New\"\r\n\"R\"\r\n5\r\n");
    QCOMPARE(done(OpenDataFile, path("run.qlx")), read_error);
    QCOMPARE(User::recording.Title, "New");
    QCOMPARE(User::recording.SampleCount, 2);
    QCOMPARE(User::recording.ViewCount, 128);
  }

  // Nothing closes the handle, so no later open or save gets through; a handle that could not be
  // opened at all bars nothing.
  void a_failed_open_bars_handle_1() {
    make_file("bad.qlx", "");
    make_file("good.qlx", one_sample);
    make_file("alone.txt", "");
    QCOMPARE(done(OpenDataFile, path("alone.txt")), read_error);  // there is no alone.qlx
    QCOMPARE(done(OpenDataFile, path("good.qlx")).last(), "panel 1: ");
    QCOMPARE(done(OpenDataFile, path("bad.qlx")), read_error);
    QCOMPARE(done(OpenDataFile, path("good.qlx")), read_error);
    QCOMPARE(done(SaveDataFile, path("new.qlx")), save_error);
    QCOMPARE(contents("new.qlx"), "(no file)");
  }

  void save_asks_about_the_name_as_chosen() {
    const QStringList saved = {"panel 1: Save File", "panel 1: "};
    QCOMPARE(done(SaveDataFile, {}), QStringList());
    QCOMPARE(done(SaveDataFile, path("run")), saved);
    QCOMPARE(shell_->scripted_dialog.shown.last(), "Save File|*.qlx|*.qlx");
    QCOMPARE(contents("run.qlx"), old_saved);
    QVERIFY(!file_handle_1().is_open());
    // Without the extension, run.qlx is overwritten unasked.
    make_file("run.qlx", "precious");
    QCOMPARE(done(SaveDataFile, path("run")), saved);
    QCOMPARE(contents("run.qlx"), old_saved);
    // No shows the dialog again, which is then cancelled.
    make_file("run.qlx", "precious");
    const QStringList question = {"box Corvane: File Exists ，Overwrite?"};
    QCOMPARE(done(SaveDataFile, path("run.qlx")), question);
    QCOMPARE(shell_->scripted_dialog.shown.size(), 5);
    QCOMPARE(contents("run.qlx"), "precious");
    shell_->scripted_messages.answers = {true};
    QCOMPARE(done(SaveDataFile, path("run.qlx")), question + saved);
    QCOMPARE(contents("run.qlx"), old_saved);
  }

  void save_fails() {
    for (const char* name : {"none/run", "folder"}) {
      QCOMPARE(done(SaveDataFile, path(name)), save_error);
      QVERIFY(!file_handle_1().is_open());
    }
    QCOMPARE(shell_->panels[1], "Save File");
    User::recording.SampleCount = 40000;
    QCOMPARE(done(SaveDataFile, path("run")), save_error);
    QCOMPARE(contents("run.qlx").count("\r\n"), 4 + 30001);
    QVERIFY(file_handle_1().is_open());
  }

  void save_on_a_full_disk() {
    if (!QFile::link(QStringLiteral("/dev/full"), path("full.qlx"))) QSKIP("no links here");
    if (!QFile::exists(path("full.qlx"))) QSKIP("this system has no /dev/full");
    QCOMPARE(done(SaveDataFile, path("full")), save_error);
    QVERIFY(file_handle_1().is_open());
  }

  void close() {
    QCOMPARE(done(CloseDataFile, {}),
             (QStringList{"unload display", "data commands off", "panel 1: "}));
    QCOMPARE(User::recording.SampleCount, 0);
    QCOMPARE(User::recording.Title, "old");
  }
};

const int registered = register_test<TestDataCommands>();

#include "test_data_commands.moc"
