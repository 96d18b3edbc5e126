#include <QSemaphore>
#include <QTemporaryDir>
#include <QThread>

#include "app/user.h"
#include "data/automation_plugin.h"
#include "data/export_command.h"
#include "data/recording_automation.h"
#include "support/export_recording.h"
#include "support/fake_shell.h"
#include "support/files.h"
#include "support/runner.h"

namespace {

enum Form { text = 1, document = 2, workbook = 3 };

}  // namespace

Q_DECLARE_METATYPE(Form)

// Save As with office applications that only write down what is asked of them.
class TestExport : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    shell_ = std::make_unique<FakeShell>();
    office_ = std::make_unique<RecordingAutomation>();
    User::recording = ::many_samples(3);
  }

  void text_byte_for_byte() {
    QCOMPARE(export_as(text, "run.of.may"), QStringList({"panel 1: Save As .TXT", "panel 1: "}));
    QCOMPARE(shell_->scripted_dialog.shown,
             QStringList{"Save As...|*.txt|*.txt|*.doc|*.doc|*.xls|*.xls"});
    QCOMPARE(contents(path("run.txt")),
             contents(CORVANE_EXPECTED "/export.txt").replace('\n', "\r\n"));
  }

  // Texts are written as they stand, quotes doubled as in the data file; no count is trusted.
  void text_of_what_a_data_file_can_bring() {
    User::recording.Title = QStringLiteral("a \"b\", 湿度");
    User::recording.SampleTimes(1) = QStringLiteral("\"昨天\"").repeated(50);
    User::recording.SampleValues(1, 0) = std::numeric_limits<float>::max();
    User::recording.SampleValues(1, 1) = -std::numeric_limits<float>::infinity();
    export_as(text);
    const QByteArrayList lines = contents(path("run.txt")).split('\n');
    QCOMPARE(lines[0], QByteArray("\"Title：a \"\"b\"\", 湿度\"\r"));
    QCOMPARE(lines[10], "\" 2   " + QByteArray("\"\"昨天\"\"").repeated(50) +
                            "               340282346638528859811704183484516925440.00       "
                            "-inf\"\r");
    User::recording.ChannelCount = -1;
    User::recording.SampleCount = 0;
    export_as(text);
    QCOMPARE(contents(path("run.txt")),
             QByteArray("\"Title：a \"\"b\"\", 湿度\"\r\n\"Channels:-1\"\r\n\"Length: 0\"\r\n"
                        "\"Start Time：\"\r\n\"End Time：\"\r\n\"\"\r\n"
                        "\"Number         Time       \"\r\n"));
    User::recording.SampleCount = Recording::max_samples + 1;
    QCOMPARE(export_as(text), QStringList{"panel 1: Save As .TXT"});
  }

  // No message; the status bar goes on saying what was under way, and the next export works.
  void text_fails() {
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), path("run.txt")));
    for (const char* name : {"run", "missing/run"}) {
      QCOMPARE(export_as(text, name), QStringList{"panel 1: Save As .TXT"});
    }
    export_as(text, "free");
    QCOMPARE(shell_->log.last(), "panel 1: ");
  }

  void call_by_call() {
    export_as(workbook);
    export_as(document);
    QCOMPARE(calls(), contents(CORVANE_EXPECTED "/workbook-calls.txt") +
                          contents(CORVANE_EXPECTED "/document-calls.txt"));
    User::recording.ChannelCount = 4;
    export_as(document);
    export_as(workbook);
    QCOMPARE(office_->lines.filter(QStringLiteral("Orientation")).join(u' ').count(u'='), 3);
  }

  // One call for many samples, in their order, without a gap; the progress never goes back.
  void many_samples() {
    User::recording = ::many_samples(1200);
    for (const Form form : {document, workbook}) {
      QStringList log = export_as(form);
      for (int i = 1, last = 0; i < log.size() - 2; ++i) {
        const int percent = log[i].section(u' ', 2, 2).chopped(1).toInt();
        QVERIFY2(percent > last && percent < 100, qPrintable(log[i]));
        QCOMPARE(log[i], QStringLiteral("progress %1: %1%").arg(last = percent));
      }
      QCOMPARE(log.mid(log.size() - 3),
               QStringList({"progress 99: 99%", "progress 0: ", "panel 1: "}));
    }
    const QStringList blocks = office_->lines.filter(QStringLiteral("Value"));
    QCOMPARE(blocks.size(), 6);
    QVERIFY(blocks[2].startsWith(
        u"Sheet2.Cells(510, 1).Resize(500, 4).Value = [501 \"2006-05-12 00:08:20\""));
  }

  void fails_data() {
    QTest::addColumn<Form>("form");
    QTest::addColumn<bool>("runs");
    QTest::addColumn<QString>("ends");
    QTest::newRow("Workbooks.Add") << workbook << true << "";
    QTest::newRow("Worksheets.Add") << workbook << true << "Workbook.close(SaveChanges:=0)";
    QTest::newRow("Value") << workbook << false << "Workbook.close(SaveChanges:=0)";
    QTest::newRow("SaveAs(filename") << workbook << true << "Workbook.close(SaveChanges:=0)";
    QTest::newRow("Documents.Add") << document << false << "Word.Quit";
    QTest::newRow("TypeText") << document << false << "Document.Close(SaveChanges:=0)\nWord.Quit";
    QTest::newRow("SaveAs") << document << true << "Document.Close(SaveChanges:=0)";
  }

  // What was begun is not left behind; a word processor that was started is quit, the user's own is
  // not touched. Status bar and progress stay.
  void fails() {
    QFETCH(Form, form);
    QFETCH(bool, runs);
    QFETCH(QString, ends);
    const QString at = QString::fromLatin1(QTest::currentDataTag());
    office_->fails = {at, runs ? at : QStringLiteral("running")};
    const QStringList log = export_as(form);
    QCOMPARE(log[0], form == document ? "panel 1: Save As .Word" : "panel 1: Save As .EXCEL");
    QVERIFY(log.constLast().startsWith(u"progress ") && log.constLast().endsWith(u'%'));
    QCOMPARE(office_->lines[1].startsWith(u"create"), !runs);
    QCOMPARE(office_->lines.join(u'\n').section(at, 1).section(u'\n', 1), ends);
  }

  void no_office_suite() {
    office_->fails << QStringLiteral("create");
    AutomationPlugin missing(folder_->path());
    for (Automation* office : std::initializer_list<Automation*>{office_.get(), &missing}) {
      QCOMPARE(export_as(workbook, "run", office),
               QStringList({"panel 1: Save As .EXCEL", "progress 1: 1%"}));
      QCOMPARE(export_as(document, "run", office),
               QStringList({"panel 1: Save As .Word", "progress 1: 1%"}));
    }
  }

  // The Recording is exported as it was, whatever other commands do to it; a second Save As
  // meanwhile does nothing.
  void other_commands_meanwhile() {
    QSemaphore go_on;
    office_->before_line = [&] {
      if (office_->lines.size() == 2) go_on.acquire();
    };
    shell_->scripted_clock.after(10, [&] {
      User::recording.SampleCount = 0;
      ExportRecording(*shell_, *office_);
      go_on.release();
    });
    export_as(workbook);
    QCOMPARE(shell_->scripted_dialog.shown.size(), 1);
    QCOMPARE(office_->lines.filter(QStringLiteral("Value")).size(), 2);
  }

  // What was begun is put away, and the closing main window is not written to any more.
  void program_ends_meanwhile() {
    User::recording = ::many_samples(Recording::max_samples);
    QSemaphore amid_samples;
    office_->before_line = [&] {
      if (office_->lines.size() == 40) amid_samples.release();
      if (office_->lines.size() >= 40) QThread::msleep(1);
    };
    shell_->scripted_clock.after(10, [&] {
      amid_samples.acquire();
      shell_->scripted_clock.stop();
    });
    QVERIFY(!export_as(workbook).contains(QStringLiteral("progress 0: ")));
    QCOMPARE(office_->lines.constLast(), QStringLiteral("Workbook.close(SaveChanges:=0)"));
    QVERIFY(office_->lines.size() < 150);
  }

 private:
  QString path(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  // What the office was asked, as the expected files write it.
  QByteArray calls() const {
    const QString lines = office_->lines.join(u'\n').replace(u'\r', QStringLiteral("<CR>"));
    return (QString(lines).remove(folder_->path() + u'/') + u'\n').toUtf8();
  }
  // Runs the export and gives what the main window was told.
  QStringList export_as(Form form, const char* name = "run", Automation* office = nullptr) {
    if (name) shell_->scripted_dialog.choices = {path(name)};
    shell_->scripted_dialog.choose_filter = form;
    shell_->log.clear();
    ExportRecording(*shell_, office ? *office : *office_);
    return shell_->log;
  }
  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<FakeShell> shell_;
  std::unique_ptr<RecordingAutomation> office_;
};

namespace {
const int registered = register_test<TestExport>();
}

#include "test_export.moc"
