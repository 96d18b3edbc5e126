#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include "app/clock.h"
#include "app/user.h"
#include "data/automation_plugin.h"
#include "e2e/flat_document.h"
#include "support/export_recording.h"
#include "support/main_window.h"
#include "support/office_suite.h"
#include "support/runner.h"

// The exports through the real office suite; what they write is opened again by it and compared
// with the text export.
class TestOffice : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase();
  void init();
  void cleanup();
  void document();
  void workbook_and_then_a_document();
  void what_the_user_opens_meanwhile_stays();
  void what_the_user_has_open_stays();
  void cannot_be_saved();
  void program_ends_while_the_suite_starts();
  void windows_stay_alive();
  void main_window_closed_meanwhile();

 private:
  enum Form { text = 1, document_form = 2, workbook_form = 3 };

  QString path(const char* name) const { return folder_->filePath(QString::fromLatin1(name)); }
  QString panel() const { return main_->window->Sts1[0]->text(); }
  void export_to(const QString& name, Form form);
  QStringList text_lines();
  void check_information(const FlatSheet& sheet, const QStringList& lines) const;
  void check_samples(const FlatSheet& sheet, std::size_t first_row, const QStringList& lines,
                     bool date_apart) const;

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<OfficeSuite> suite_;
  std::unique_ptr<SystemClock> clock_;
  ScriptedPort port_;
  std::unique_ptr<MainWindow> main_;
};

namespace {

constexpr int sample_count = 1201;
constexpr int patience_ms = 60'000;

QStringList pipes() {
  return QDir(QStringLiteral("/tmp")).entryList({"OSL_PIPE_*_corvane_*"}, QDir::System);
}

}  // namespace

void TestOffice::initTestCase() {
  if (!OfficeSuite::installed()) QSKIP("The office suite LibreOffice or its SDK is not installed.");
}

void TestOffice::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  clock_ = std::make_unique<SystemClock>();
  main_ = std::make_unique<MainWindow>(port_, *clock_);
  suite_ = std::make_unique<OfficeSuite>();
  User::recording = many_samples(sample_count);
  User::recording.ChannelCount = 4;
  for (std::size_t slot = 0; slot < 4; ++slot) {
    User::recording.ChannelInfo[0][slot] = QString::number(slot + 1);
    User::recording.ChannelInfo[1][slot] = QStringLiteral("=湿度 <%1>").arg(slot);
    User::recording.ChannelInfo[2][slot] = QStringLiteral("%RH");
    User::recording.ChannelStats[0][slot] = 119.99;
    User::recording.ChannelStats[1][slot] = -40;
  }
}

void TestOffice::cleanup() {
  main_.reset();
  suite_.reset();
}

void TestOffice::export_to(const QString& name, Form form) {
  main_->files.choices = {name};
  main_->files.choose_filter = form;
  main_->run(QStringLiteral("outputs"));
}

// The lines of the text export without the quotes around them.
QStringList TestOffice::text_lines() {
  export_to(path("text"), text);
  QFile file(path("text.txt"));
  QStringList lines;
  if (!file.open(QIODevice::ReadOnly)) return lines;
  while (!file.atEnd())
    lines << QString::fromLocal8Bit(file.readLine().trimmed()).mid(1).chopped(1);
  return lines;
}

void TestOffice::document() {
  export_to(path("run"), document_form);
  QCOMPARE(panel(), QString());
  QCOMPARE(main_->window->Text1->text(), QString());
  QCOMPARE(main_->window->PrgB1->value(), 0);
  QCOMPARE(suite_->processes(), QList<qint64>());
  QCOMPARE(suite_->left_files(), QStringList());

  QFile file(path("run.doc"));
  QVERIFY(file.open(QIODevice::ReadOnly));
  QVERIFY2(file.read(8) == QByteArray::fromHex("d0cf11e0a1b11ae1"), "a binary document");
  QVERIFY(suite_->convert(file.fileName(), QStringLiteral("fodt"), folder_->path()));
  const QStringList written = read_paragraphs(path("run.fodt"));
  QStringList expected = text_lines();
  expected.replaceInStrings(QStringLiteral(",Min.:"), QStringLiteral(",Min:"));
  QCOMPARE(expected.size(), 4 + 5 + 2 + sample_count);
  for (qsizetype i = 0; i < std::min(written.size(), expected.size()); ++i) {
    QCOMPARE(written[i], expected[i]);
  }
  QCOMPARE(written.size(), expected.size());
  QFile flat(path("run.fodt"));
  QVERIFY(flat.open(QIODevice::ReadOnly));
  QVERIFY(flat.readAll().contains("style:font-name=\"Courier New\""));
}

void TestOffice::check_information(const FlatSheet& sheet, const QStringList& lines) const {
  for (std::size_t row = 0; row < 10; ++row) {
    QCOMPARE(sheet[row].size(), row == 9 ? 0U : 1U);
    if (row < 9) QCOMPARE(sheet[row][0].text, lines[static_cast<qsizetype>(row)]);
  }
}

// Rows from `first_row` (0-based) on: a row of heads, then a row for each line of the text export.
void TestOffice::check_samples(const FlatSheet& sheet, std::size_t first_row,
                               const QStringList& lines, bool date_apart) const {
  QStringList heads = {"Number"};
  if (date_apart) heads << QStringLiteral("Date");
  heads << QStringLiteral("Time");
  for (int slot = 0; slot < 4; ++slot) heads << QStringLiteral("=湿度 <%1>(%RH)").arg(slot);
  QCOMPARE(sheet.size(), first_row + 1 + sample_count);
  for (std::size_t row = first_row; row < sheet.size(); ++row) {
    const bool head = row == first_row;
    QStringList expected = heads;
    if (!head) {
      const auto line = static_cast<qsizetype>(row - first_row - 1);
      expected = lines[11 + line].split(u' ', Qt::SkipEmptyParts);
      if (!date_apart) expected[1] += u' ' + expected.takeAt(2);
    }
    QCOMPARE(sheet[row].size(), static_cast<std::size_t>(expected.size()));
    for (qsizetype column = 0; column < expected.size(); ++column) {
      const FlatCell& cell = sheet[row][static_cast<std::size_t>(column)];
      QCOMPARE(cell.text.trimmed(), expected[column]);
      const bool number = !head && (column == 0 || column > (date_apart ? 2 : 1));
      QCOMPARE(cell.is_number, number);
      if (number) QCOMPARE(cell.number, expected[column].toDouble());
    }
  }
}

// The spreadsheet application goes on running; the document's export finds it running and leaves it
// so.
void TestOffice::workbook_and_then_a_document() {
  const QStringList pipes_before = pipes();
  export_to(path("run"), workbook_form);
  QCOMPARE(panel(), QString());
  const auto running = suite_->processes();
  QVERIFY(!running.isEmpty());
  export_to(path("run"), document_form);
  QCOMPARE(panel(), QString());
  QCOMPARE(suite_->processes(), running);
  QVERIFY(QFile::exists(path("run.doc")));
  // What the first export left is overwritten by a second one.
  export_to(path("run"), workbook_form);
  QCOMPARE(panel(), QString());
  QCOMPARE(suite_->processes(), running);
  QCOMPARE(pipes(), pipes_before);

  QVERIFY(suite_->convert(path("run.xls"), QStringLiteral("fods"), folder_->path()));
  const QStringList lines = text_lines();
  const auto sheets = read_sheets(path("run.fods"));
  QCOMPARE(sheets.size(), 3U);
  check_information(sheets[0], lines);
  check_samples(sheets[0], 10, lines, false);
  check_samples(sheets[1], 0, lines, true);
  QVERIFY(sheets[2].empty());
}

// The word processor quits only if nothing of the user's would go with it.
void TestOffice::what_the_user_opens_meanwhile_stays() {
  if (!OfficeSuite::has_windows()) QSKIP("This office suite has no windows to open files in.");
  QFile file(path("mine.txt"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write("mine");
  file.close();
  const auto never = [] { return false; };
  QVERIFY_THROWS_EXCEPTION(AutomationError, main_->office.running("Word.Application", never));
  AutomationPointer word = main_->office.create("Word.Application", never);
  word->get("Documents")->call("Add");
  suite_->open(file.fileName());
  QTRY_VERIFY_WITH_TIMEOUT(OfficeSuite::is_open(file.fileName()), patience_ms);
  word->call("Quit");
  word.reset();
  QVERIFY(OfficeSuite::is_open(file.fileName()));
  QVERIFY(!suite_->processes().isEmpty());
}

void TestOffice::what_the_user_has_open_stays() {
  QFile file(path("mine.txt"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write("mine");
  file.close();
  suite_->open(file.fileName());
  QTRY_VERIFY_WITH_TIMEOUT(OfficeSuite::is_open(file.fileName()), patience_ms);
  const auto running = suite_->processes();
  export_to(path("run"), document_form);
  QCOMPARE(panel(), QString());
  QVERIFY(QFile::exists(path("run.doc")));
  QCOMPARE(suite_->processes(), running);
  QVERIFY(OfficeSuite::is_open(file.fileName()));
}

void TestOffice::cannot_be_saved() {
  QVERIFY(QDir(folder_->path()).mkdir(QStringLiteral("run.doc")));
  export_to(path("run"), document_form);
  QCOMPARE(panel(), QStringLiteral("Save As .Word"));
  QCOMPARE(main_->window->Text1->text(), QStringLiteral("99%"));
  QCOMPARE(suite_->processes(), QList<qint64>());
}

void TestOffice::program_ends_while_the_suite_starts() {
  QTimer timer;
  connect(&timer, &QTimer::timeout, &timer, [&] {
    if (!suite_->processes().isEmpty()) main_->window->close();
  });
  timer.start(5);
  export_to(path("run"), workbook_form);
  QTRY_COMPARE_WITH_TIMEOUT(suite_->processes(), QList<qint64>(), patience_ms);
  QVERIFY(!QFile::exists(path("run.xls")));
}

// The main window repaints, ticks and shows the progress while a long export runs.
void TestOffice::windows_stay_alive() {
  User::recording = many_samples(Recording::max_samples);
  QSet<QString> percents;
  int ticks = 0;
  QTimer timer;
  connect(&timer, &QTimer::timeout, &timer, [&] {
    ++ticks;
    percents << main_->window->Text1->text();
    QCOMPARE(panel(), QStringLiteral("Save As .Word"));
  });
  timer.start(50);
  export_to(path("run"), document_form);
  timer.stop();
  QVERIFY2(ticks > 10, qPrintable(QString::number(ticks)));
  QVERIFY(percents.size() > 2);
  QCOMPARE(panel(), QString());
}

void TestOffice::main_window_closed_meanwhile() {
  User::recording = many_samples(Recording::max_samples);
  QTimer timer;
  connect(&timer, &QTimer::timeout, &timer, [&] {
    if (main_->window->PrgB1->value() >= 2) main_->run(QStringLiteral("Quit"));
  });
  timer.start(5);
  export_to(path("run"), document_form);
  QVERIFY(!main_->window->isVisible());
  main_.reset();
  QTRY_COMPARE_WITH_TIMEOUT(suite_->processes(), QList<qint64>(), patience_ms);
}

namespace {
const int registered = register_test<TestOffice>();
}

#include "test_office.moc"
