#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/errors.h"
#include "app/user.h"
#include "data/data_commands.h"
#include "data/file_handle.h"
#include "support/fake_shell.h"
#include "support/runner.h"

class TestDataCommands : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void cleanup();
  void open();
  void open_without_a_file_data();
  void open_without_a_file();
  void open_faults_data();
  void open_faults();
  void a_failed_open_bars_handle_1();
  void save();
  void save_asks_before_overwriting();
  void save_without_an_extension_overwrites_unasked();
  void save_fails_data();
  void save_fails();
  void close();

 private:
  QString path(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  void make_file(const char* name, const QByteArray& bytes) const;
  QByteArray contents(const char* name) const;

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<FakeShell> shell_;
};

namespace {

const QByteArray one_sample =
    "\"New\"\r\n\"R\"\r\n1\r\n\"3\"\r\n\"t\"\r\n\"C\"\r\n1\r\n\"now\"\r\n5.5\r\n";
const QStringList read_error = {"panel 1: Open File", "unload display", "data commands off",
                                "panel 1: ", "box Corvane: File Read Error"};

}  // namespace

void TestDataCommands::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  shell_ = std::make_unique<FakeShell>();
  User::recording = Recording();
  User::recording.Title = QStringLiteral("old");
  User::recording.SampleCount = 2;
  User::recording.ViewCount = 128;
}

void TestDataCommands::cleanup() {
  skip_on_error([] { file_handle_1().close(); });
}

void TestDataCommands::make_file(const char* name, const QByteArray& bytes) const {
  QFile file(path(name));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}

QByteArray TestDataCommands::contents(const char* name) const {
  QFile file(path(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void TestDataCommands::open() {
  make_file("run.qlx", one_sample);
  make_file("run.other", "");
  // The name is cut at its first dot; that the chosen file itself exists is all that is asked.
  shell_->scripted_dialog.choices = {path("run.other")};
  shell_->scripted_dialog.file_name = QStringLiteral("from last time");
  OpenDataFile(*shell_);
  QCOMPARE(shell_->scripted_dialog.shown, QStringList{"Open File|*.qlx|*.qlx"});
  QCOMPARE(shell_->log, (QStringList{"panel 1: Open File", "unload display", "show display",
                                     "data commands on", "panel 1: "}));
  QCOMPARE(User::recording.Title, "New");
  QCOMPARE(User::recording.SampleValues(0, 0), 5.5F);
  QCOMPARE(User::recording.ViewCount, 1);
  QVERIFY(!file_handle_1().is_open());
}

void TestDataCommands::open_without_a_file_data() {
  QTest::addColumn<QString>("chosen");
  QTest::addColumn<bool>("message");
  QTest::newRow("cancelled") << "" << false;
  QTest::newRow("missing") << "none.qlx" << true;
  QTest::newRow("only with the extension there") << "run" << true;
  QTest::newRow("a folder") << "folder.qlx" << true;
}

void TestDataCommands::open_without_a_file() {
  QFETCH(QString, chosen);
  QFETCH(bool, message);
  make_file("run.qlx", one_sample);
  QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("folder.qlx")));
  shell_->scripted_dialog.choices = {chosen.isEmpty() ? chosen : folder_->filePath(chosen)};
  shell_->scripted_dialog.file_name = path("run.qlx");
  OpenDataFile(*shell_);
  QCOMPARE(shell_->log, message ? QStringList{"box Corvane: File Lose"} : QStringList{});
  QCOMPARE(User::recording.Title, "old");
}

void TestDataCommands::open_faults_data() {
  QTest::addColumn<QByteArray>("file");
  QTest::addColumn<QString>("title");
  QTest::newRow("empty") << QByteArray() << "old";
  QTest::newRow("five channels") << QByteArray("\"New\"\r\n\"R\"\r\n5\r\n") << "New";
  QTest::newRow("ends early") << one_sample.chopped(5) << "New";
  QTest::newRow("more than 30001 samples")
      << "\"New\"\r\n\"R\"\r\n0\r\n30002\r\n" + QByteArray("\"t\"\r\n").repeated(30002) << "New";
}

void TestDataCommands::open_faults() {
  QFETCH(QByteArray, file);
  make_file("run.qlx", file);
  shell_->scripted_dialog.choices = {path("run.qlx")};
  OpenDataFile(*shell_);
  QCOMPARE(shell_->log, read_error);
  QTEST(User::recording.Title, "title");
  QCOMPARE(User::recording.ViewCount, 128);
  QVERIFY(file_handle_1().is_open());
}

// Nothing closes the handle, so no later open or save gets through; a handle that could not be
// opened at all bars nothing.
void TestDataCommands::a_failed_open_bars_handle_1() {
  make_file("bad.qlx", "");
  make_file("good.qlx", one_sample);
  make_file("alone.txt", "");
  shell_->scripted_dialog.choices = {path("alone.txt"), path("good.qlx"), path("bad.qlx"),
                                     path("good.qlx"), path("new.qlx")};
  OpenDataFile(*shell_);  // there is no alone.qlx
  QCOMPARE(shell_->log, read_error);
  OpenDataFile(*shell_);
  QCOMPARE(User::recording.Title, "New");
  OpenDataFile(*shell_);
  shell_->log.clear();
  OpenDataFile(*shell_);
  QCOMPARE(shell_->log, read_error);
  shell_->log.clear();
  SaveDataFile(*shell_);
  QCOMPARE(shell_->log, (QStringList{"panel 1: Save File", "box Corvane: Save File Error"}));
  QCOMPARE(contents("new.qlx"), "(no file)");
}

void TestDataCommands::save() {
  shell_->scripted_dialog.choices = {path("run")};
  User::recording.SampleCount = 0;
  SaveDataFile(*shell_);
  QCOMPARE(shell_->scripted_dialog.shown, QStringList{"Save File|*.qlx|*.qlx"});
  QCOMPARE(shell_->log, (QStringList{"panel 1: Save File", "panel 1: "}));
  QCOMPARE(contents("run.qlx"), "\"old\"\r\n\"\"\r\n0\r\n0\r\n");
  QVERIFY(!file_handle_1().is_open());
  SaveDataFile(*shell_);  // cancelled
  QCOMPARE(shell_->log.size(), 2);
}

void TestDataCommands::save_asks_before_overwriting() {
  make_file("run.qlx", "precious");
  shell_->scripted_dialog.choices = {path("run.qlx"), path("run.qlx"), path("run.qlx")};
  shell_->scripted_messages.answers = {false, true};
  User::recording.SampleCount = 0;
  SaveDataFile(*shell_);
  const QString question = QStringLiteral("box Corvane: File Exists ，Overwrite?");
  QCOMPARE(shell_->log, (QStringList{question, question, "panel 1: Save File", "panel 1: "}));
  QCOMPARE(shell_->scripted_dialog.shown.size(), 2);
  QCOMPARE(contents("run.qlx"), "\"old\"\r\n\"\"\r\n0\r\n0\r\n");
}

void TestDataCommands::save_without_an_extension_overwrites_unasked() {
  make_file("run.qlx", "precious");
  shell_->scripted_dialog.choices = {path("run")};
  SaveDataFile(*shell_);
  QVERIFY(shell_->scripted_messages.shown.isEmpty());
  QVERIFY(contents("run.qlx").startsWith("\"old\"\r\n"));
}

void TestDataCommands::save_fails_data() {
  QTest::addColumn<QString>("chosen");
  QTest::addColumn<int>("samples");
  QTest::addColumn<bool>("open");
  QTest::addColumn<int>("lines");
  QTest::newRow("no such folder") << "none/run" << 2 << false << 0;
  QTest::newRow("a folder of that name") << "folder" << 2 << false << 0;
  QTest::newRow("disk full") << "full" << 2 << true << 0;
  QTest::newRow("more samples than are held") << "run" << 40000 << true << 4 + 30001;
}

void TestDataCommands::save_fails() {
  QFETCH(QString, chosen);
  QFETCH(int, samples);
  QFETCH(int, lines);
  QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("folder.qlx")));
  QVERIFY(QFile::link(QStringLiteral("/dev/full"), path("full.qlx")));
  User::recording.SampleCount = samples;
  shell_->scripted_dialog.choices = {folder_->filePath(chosen)};
  SaveDataFile(*shell_);
  QCOMPARE(shell_->log, (QStringList{"panel 1: Save File", "box Corvane: Save File Error"}));
  QCOMPARE(shell_->panels[1], "Save File");
  QTEST(file_handle_1().is_open(), "open");
  QCOMPARE(int(contents("run.qlx").count("\r\n")), lines);
}

void TestDataCommands::close() {
  CloseDataFile(*shell_);
  QCOMPARE(shell_->log, (QStringList{"unload display", "data commands off", "panel 1: "}));
  QCOMPARE(User::recording.SampleCount, 0);
  QCOMPARE(User::recording.Title, "old");
}

namespace {
const int registered = register_test<TestDataCommands>();
}

#include "test_data_commands.moc"
