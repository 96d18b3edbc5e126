#include <QFile>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include "app/user.h"
#include "data/automation_plugin.h"
#include "data/export_command.h"
#include "data/recording_automation.h"
#include "support/export_recording.h"
#include "support/fake_shell.h"
#include "support/runner.h"

class TestExportCommand : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void text();
  void nothing_chosen();
  void asks_before_overwriting();
  void text_fails_data();
  void text_fails();
  void office_forms_data();
  void office_forms();
  void no_office_suite_data();
  void no_office_suite();
  void other_commands_meanwhile();
  void program_ends_meanwhile();

 private:
  QString path(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  void choose(const char* name, int filter);

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<FakeShell> shell_;
  std::unique_ptr<RecordingAutomation> office_;
};

void TestExportCommand::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  shell_ = std::make_unique<FakeShell>();
  office_ = std::make_unique<RecordingAutomation>();
  User::recording = cold_store();
}

void TestExportCommand::choose(const char* name, int filter) {
  shell_->scripted_dialog.choices = {path(name)};
  shell_->scripted_dialog.choose_filter = filter;
}

void TestExportCommand::text() {
  choose("run.of.may", 1);
  ExportRecording(*shell_, *office_);
  QCOMPARE(shell_->scripted_dialog.shown,
           QStringList{"Save As...|*.txt|*.txt|*.doc|*.doc|*.xls|*.xls"});
  QCOMPARE(shell_->log, (QStringList{"panel 1: Save As .TXT", "panel 1: "}));
  QFile file(path("run.txt"));
  QVERIFY(file.open(QIODevice::ReadOnly));
  QVERIFY(file.readAll().endsWith("60.80\"\r\n"));
  QCOMPARE(office_->lines, QStringList());
}

void TestExportCommand::nothing_chosen() {
  ExportRecording(*shell_, *office_);
  QCOMPARE(shell_->log, QStringList());
}

// The name as chosen is asked about, the name with the extension is written.
void TestExportCommand::asks_before_overwriting() {
  for (const char* name : {"old.txt", "other.txt"}) {
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("old");
  }
  shell_->scripted_dialog.choices = {path("old.txt"), path("other")};
  ExportRecording(*shell_, *office_);
  QCOMPARE(shell_->log, (QStringList{"box Corvane: File Exists ，Overwrite?",
                                     "panel 1: Save As .TXT", "panel 1: "}));
  QCOMPARE(QFileInfo(path("old.txt")).size(), 3);
  QVERIFY(QFileInfo(path("other.txt")).size() > 3);
}

void TestExportCommand::text_fails_data() {
  QTest::addColumn<QString>("link");
  QTest::newRow("no such folder") << "";
  QTest::newRow("device full") << "/dev/full";
}

// No message; the status bar goes on saying what was under way, and the next export is free to
// work.
void TestExportCommand::text_fails() {
  QFETCH(QString, link);
  if (!link.isEmpty()) {
    if (!QFile::exists(link)) QSKIP("no device that is always full");
    QVERIFY(QFile::link(link, path("run.txt")));
  }
  choose(link.isEmpty() ? "missing/run" : "run", 1);
  ExportRecording(*shell_, *office_);
  QCOMPARE(shell_->log, QStringList{"panel 1: Save As .TXT"});
  choose("free", 1);
  ExportRecording(*shell_, *office_);
  QCOMPARE(shell_->panels[1], QString());
  QVERIFY(QFile::exists(path("free.txt")));
}

void TestExportCommand::office_forms_data() {
  QTest::addColumn<int>("filter");
  QTest::addColumn<QString>("panel");
  QTest::addColumn<QString>("saved");
  QTest::newRow("document") << 2 << "Save As .Word"
                            << "Document.SaveAs(\"%1.doc\")";
  QTest::newRow("workbook") << 3 << "Save As .EXCEL"
                            << "Workbook.SaveAs(filename:=\"%1.xls\", ConflictResolution:=2)";
}

void TestExportCommand::office_forms() {
  QFETCH(int, filter);
  QFETCH(QString, panel);
  QFETCH(QString, saved);
  User::recording = many_samples(3000);
  choose("run.x", filter);
  ExportRecording(*shell_, *office_);
  QVERIFY(office_->lines.contains(saved.arg(path("run"))));
  QCOMPARE(shell_->log.constFirst(), "panel 1: " + panel);
  // The progress never goes back, and its text is its value.
  int last = 0;
  for (const QString& line : shell_->log.mid(1, shell_->log.size() - 3)) {
    const int percent = line.section(u' ', 1, 1).chopped(1).toInt();
    QVERIFY2(percent > last && percent < 100, qPrintable(line));
    QCOMPARE(line, QStringLiteral("progress %1: %1%").arg(percent));
    last = percent;
  }
  QCOMPARE(last, 99);
  QCOMPARE(shell_->log.mid(shell_->log.size() - 2), (QStringList{"progress 0: ", "panel 1: "}));
}

void TestExportCommand::no_office_suite_data() {
  QTest::addColumn<bool>("plugin");
  QTest::newRow("no application") << true;
  QTest::newRow("no plug-in") << false;
}

void TestExportCommand::no_office_suite() {
  QFETCH(bool, plugin);
  office_->can_be_created = false;
  AutomationPlugin missing(folder_->path());
  choose("run", 3);
  if (plugin) {
    ExportRecording(*shell_, *office_);
  } else {
    ExportRecording(*shell_, missing);
  }
  QCOMPARE(shell_->log, (QStringList{"panel 1: Save As .EXCEL", "progress 1: 1%"}));
}

// The Recording is exported as it was, whatever other commands do to it; a second Save As waits
// for the first by doing nothing.
void TestExportCommand::other_commands_meanwhile() {
  QSemaphore go_on;
  office_->before_line = [&] {
    if (office_->lines.size() == 2) go_on.acquire();
  };
  shell_->scripted_clock.after(10, [&] {
    User::recording.SampleCount = 0;
    User::recording.ChannelInfo[1][0] = QStringLiteral("gone");
    ExportRecording(*shell_, *office_);
    go_on.release();
  });
  choose("run", 3);
  ExportRecording(*shell_, *office_);
  QCOMPARE(shell_->scripted_dialog.shown.size(), 1);
  QVERIFY(office_->lines.contains(QStringLiteral("Sheet2.Cells(9, 3) = \"Temperature(C)\"")));
  QCOMPARE(office_->lines.filter(QStringLiteral("Value")).size(), 2);
  QCOMPARE(shell_->progress_text, QString());
}

// What was begun is put away, and the closing main window is not written to any more.
void TestExportCommand::program_ends_meanwhile() {
  User::recording = many_samples(Recording::max_samples);
  QSemaphore amid_samples;
  QSemaphore go_on;
  office_->before_line = [&] {
    if (office_->lines.size() == 40) {
      amid_samples.release();
      go_on.acquire();
    }
    if (office_->lines.size() > 40) QThread::msleep(1);
  };
  shell_->scripted_clock.after(10, [&] {
    amid_samples.acquire();
    shell_->is_shutting_down = true;
    shell_->scripted_clock.stop();
    go_on.release();
  });
  choose("run", 3);
  ExportRecording(*shell_, *office_);
  QCOMPARE(office_->lines.constLast(), QStringLiteral("Workbook.close(SaveChanges:=0)"));
  QVERIFY(office_->lines.size() < 150);
  QVERIFY(!shell_->log.contains(QStringLiteral("progress 0: ")));
}

namespace {
const int registered = register_test<TestExportCommand>();
}

#include "test_export_command.moc"
