#include <QDir>
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
const QString opened = "panel 1: Open File;unload display;show display;data commands on;panel 1: ";
const QString read_error =
    "panel 1: Open File;unload display;data commands off;panel 1: ;box Corvane: File Read Error";
const QString saved = "panel 1: Save File;panel 1: ";
const QString save_error = "panel 1: Save File;box Corvane: Save File Error";

}  // namespace

class TestDataCommands : public QObject {
  Q_OBJECT

  void make_file(const QString& name, const QByteArray& bytes) const {
    QFile file(folder_->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
  }
  QByteArray contents(const QString& name) const {
    QFile file(folder_->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
  }
  // What the command does when this name is chosen in the file dialog.
  QString done(void (*command)(Shell&), const QString& name) {
    shell_->log.clear();
    shell_->scripted_dialog.choices = {name.isEmpty() ? name : folder_->filePath(name)};
    shell_->scripted_dialog.file_name = "left.qlx";  // by an earlier command
    command(*shell_);
    return shell_->log.join(u';');
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<FakeShell> shell_;

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    shell_ = std::make_unique<FakeShell>();
    User::recording = Recording();
    User::recording.Title = "old";
    User::recording.SampleCount = 2;
    User::recording.ViewCount = 128;
    make_file("run.qlx", one_sample);
    QVERIFY(QDir(folder_->path()).mkdir("folder.qlx"));
  }
  void cleanup() {
    skip_on_error([] { file_handle_1().close(); });
  }

  // The name is cut at its first dot; that the chosen file itself exists is all that is asked.
  void open() {
    QCOMPARE(done(OpenDataFile, {}), "");
    for (const char* name : {"none.qlx", "run", "folder.qlx"}) {
      QCOMPARE(done(OpenDataFile, name), "box Corvane: File Lose");
    }
    QCOMPARE(User::recording.Title, "old");
    make_file("run.other", "");
    QCOMPARE(done(OpenDataFile, "run.other"), opened);
    QCOMPARE(shell_->scripted_dialog.shown.last(), "Open File|*.qlx|*.qlx");
    QVERIFY(User::recording.Title == "New" && User::recording.SampleValues(0, 0) == 5.5F);
    QVERIFY(User::recording.ViewCount == 1 && !file_handle_1().is_open());
    QCOMPARE(done(CloseDataFile, {}), "unload display;data commands off;panel 1: ");
    QVERIFY(User::recording.SampleCount == 0 && User::recording.Title == "New");
  }

  // Nothing closes the handle, so no later open or save gets through; a handle that could not be
  // opened at all bars nothing.
  void a_failed_open_bars_handle_1() {
    make_file("five.qlx", "\"New\"\r\n\"R\"\r\n5\r\n");
    make_file("alone.txt", "");
    QCOMPARE(done(OpenDataFile, "alone.txt"), read_error);  // there is no alone.qlx
    QCOMPARE(done(OpenDataFile, "run.qlx"), opened);
    QCOMPARE(done(OpenDataFile, "five.qlx"), read_error);
    QVERIFY(User::recording.ChannelCount == 5 && User::recording.SampleCount == 1);
    QCOMPARE(done(OpenDataFile, "run.qlx"), read_error);
    QCOMPARE(done(SaveDataFile, "new.qlx"), save_error);
    QCOMPARE(contents("new.qlx"), "(no file)");
  }

  void save_asks_about_the_name_as_chosen() {
    const QString question = "box Corvane: File Exists ，Overwrite?";
    QCOMPARE(done(SaveDataFile, {}), "");
    // No shows the dialog again, which is then cancelled.
    QCOMPARE(done(SaveDataFile, "run.qlx"), question);
    QVERIFY(shell_->scripted_dialog.shown == QStringList(3, "Save File|*.qlx|*.qlx"));
    QCOMPARE(contents("run.qlx"), one_sample);
    shell_->scripted_messages.answers = {true};
    QCOMPARE(done(SaveDataFile, "run.qlx"), question + u';' + saved);
    QCOMPARE(contents("run.qlx"), old_saved);
    // By another name that is cut to this one it is overwritten unasked.
    make_file("run.qlx", "precious");
    QCOMPARE(done(SaveDataFile, "run.1.qlx"), saved);
    QVERIFY(contents("run.qlx") == old_saved && !file_handle_1().is_open());
  }

  void save_fails() {
    for (const char* name : {"none/run", "folder"}) {
      QCOMPARE(done(SaveDataFile, name), save_error);
      QVERIFY(!file_handle_1().is_open());
    }
    QVERIFY(QFile::link("/dev/full", folder_->filePath("full.qlx")));
    QCOMPARE(done(SaveDataFile, "full"), save_error);
    QVERIFY(file_handle_1().is_open());
  }
};

const int registered = register_test<TestDataCommands>();

#include "test_data_commands.moc"
