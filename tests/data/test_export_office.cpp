#include <QTest>

#include "data/export_document.h"
#include "data/export_progress.h"
#include "data/export_workbook.h"
#include "data/recording_automation.h"
#include "support/export_recording.h"
#include "support/runner.h"

class TestExportOffice : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void workbook_call_by_call();
  void workbook_fails_data();
  void workbook_fails();
  void document_call_by_call();
  void document_fails_data();
  void document_fails();
  void wide_lines_need_a_wide_page();
  void many_samples_go_in_blocks();
  void without_samples();
  void told_to_stop();
};

namespace {

const QString workbook_path = QStringLiteral("out.xls");
const QString document_path = QStringLiteral("out.doc");

QStringList workbook_lines(const Recording& recording) {
  RecordingAutomation office;
  ExportProgress progress;
  export_workbook(office, recording, workbook_path, progress);
  return office.lines;
}

QStringList document_lines(const Recording& recording) {
  RecordingAutomation office;
  ExportProgress progress;
  export_document(office, recording, document_path, progress);
  return office.lines;
}

}  // namespace

void TestExportOffice::workbook_call_by_call() {
  const QStringList expected = {
      "running Excel.Application",
      "create Excel.Application",
      "Excel.Workbooks.Add",
      "Workbook.Worksheets.Add",
      "Workbook.Worksheets.Add",
      "Sheet2.Columns(1).ColumnWidth = 10",
      "Sheet2.Columns(2).ColumnWidth = 25",
      "Sheet2.Columns(3).ColumnWidth = 16",
      "Sheet2.Columns(3).NumberFormatLocal = \"0.00_ \"",
      "Sheet2.Columns(4).ColumnWidth = 15",
      "Sheet2.Columns(4).NumberFormatLocal = \"0.00_ \"",
      "Sheet1.Columns(2).ColumnWidth = 15",
      "Sheet1.Columns(4).ColumnWidth = 16",
      "Sheet1.Columns(4).NumberFormatLocal = \"0.00_ \"",
      "Sheet1.Columns(5).ColumnWidth = 15",
      "Sheet1.Columns(5).NumberFormatLocal = \"0.00_ \"",
      "Sheet1.Cells(1, 1) = \"Number\"",
      "Sheet1.Cells(1, 2) = \"Date\"",
      "Sheet1.Cells(1, 3) = \"Time\"",
      "Sheet2.Cells(1, 1) = \"Title：Cold store\"",
      "Sheet2.Cells(2, 1) = \"Channels: 2\"",
      "Sheet2.Cells(3, 1) = \"Length: 3\"",
      "Sheet2.Cells(4, 1) = \"Start Time：2006-05-12 13:45:30\"",
      "Sheet2.Cells(5, 1) = \"End Time：2006-05-12 13:47:30\"",
      "Sheet2.Cells(6, 1) = \"Channel No.1,Channel Name:Temperature，Unit:C,"
      "Max.:4.60,Min.:4.40,Average:4.50\"",
      "Sheet2.Cells(7, 1) = \"Channel No.2,Channel Name:Humidity，Unit:%RH,"
      "Max.:61.20,Min.:60.80,Average:61.00\"",
      "Sheet2.Cells(9, 1) = \"Number\"",
      "Sheet2.Cells(9, 2) = \"Time\"",
      "Sheet1.Cells(1, 4) = \"Temperature(C)\"",
      "Sheet2.Cells(9, 3) = \"Temperature(C)\"",
      "Sheet1.Cells(1, 5) = \"Humidity(%RH)\"",
      "Sheet2.Cells(9, 4) = \"Humidity(%RH)\"",
      "Sheet2.Cells(10, 1).Resize(3, 4).Value = [1, \"2006-05-12 13:45:30\", 4.5, 61.2; "
      "2, \"2006-05-12 13:46:30\", 4.6, 61; 3, \"2006-05-12 13:47:30\", 4.4, 60.8]",
      "Sheet1.Cells(2, 1).Resize(3, 5).Value = [1, \"2006-05-12\", \"13:45:30\", 4.5, 61.2; "
      "2, \"2006-05-12\", \"13:46:30\", 4.6, 61; 3, \"2006-05-12\", \"13:47:30\", 4.4, 60.8]",
      "Workbook.SaveAs(filename:=\"out.xls\", ConflictResolution:=2)",
      "Workbook.close"};
  const QStringList lines = workbook_lines(cold_store());
  for (qsizetype i = 0; i < std::min(lines.size(), expected.size()); ++i) {
    QCOMPARE(lines[i], expected[i]);
  }
  QCOMPARE(lines.size(), expected.size());
}

void TestExportOffice::workbook_fails_data() {
  QTest::addColumn<QString>("at");
  QTest::addColumn<bool>("closes");
  QTest::newRow("workbook") << "Workbooks.Add" << false;
  QTest::newRow("sheet") << "Worksheets.Add" << true;
  QTest::newRow("samples") << "Value" << true;
  QTest::newRow("saving") << "SaveAs" << true;
}

// The application that goes on running must not keep a workbook that nobody sees.
void TestExportOffice::workbook_fails() {
  QFETCH(QString, at);
  QFETCH(bool, closes);
  RecordingAutomation office;
  office.runs = true;
  office.fails_at = at;
  ExportProgress progress;
  QVERIFY_THROWS_EXCEPTION(AutomationError,
                           export_workbook(office, cold_store(), workbook_path, progress));
  QVERIFY(!office.lines.contains(QStringLiteral("create Excel.Application")));
  QCOMPARE(office.lines.constLast() == u"Workbook.close(SaveChanges:=0)", closes);
  if (!closes) QVERIFY(office.lines.constLast().contains(at));
}

void TestExportOffice::document_call_by_call() {
  const QStringList expected = {
      "running Word.Application",
      "create Word.Application",
      "Word.Documents.Add",
      "Word.Selection.Font.Name = \"Courier New\"",
      "Word.Selection.Font.Size = 9",
      "Word.Selection.TypeText(\"Title：Cold store\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"Channels: 2\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"Length: 3\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"Start Time：2006-05-12 13:45:30\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"End Time：2006-05-12 13:47:30\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"Channel No.1,Channel Name:Temperature，Unit:C,"
      "Max.:4.60,Min:4.40,Average:4.50\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"Channel No.2,Channel Name:Humidity，Unit:%RH,"
      "Max.:61.20,Min:60.80,Average:61.00\")",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeParagraph",
      "Word.Selection.TypeText(\"Number         Time              Temperature(C)       "
      "Humidity(%RH)\")",
      "Word.Selection.TypeText(\"\r 1   2006-05-12 13:45:30               4.50       61.20"
      "\r 2   2006-05-12 13:46:30               4.60       61.00"
      "\r 3   2006-05-12 13:47:30               4.40       60.80\")",
      "Document.SaveAs(\"out.doc\")",
      "Word.Quit"};
  const QStringList lines = document_lines(cold_store());
  for (qsizetype i = 0; i < std::min(lines.size(), expected.size()); ++i) {
    QCOMPARE(lines[i], expected[i]);
  }
  QCOMPARE(lines.size(), expected.size());
}

void TestExportOffice::document_fails_data() {
  QTest::addColumn<QString>("at");
  QTest::addColumn<bool>("runs");
  QTest::addColumn<QStringList>("ends");
  const QString close = QStringLiteral("Document.Close(SaveChanges:=0)");
  const QString quit = QStringLiteral("Word.Quit");
  QTest::newRow("typing, started") << "TypeText" << false << QStringList{close, quit};
  QTest::newRow("saving, started") << "SaveAs" << false << QStringList{close, quit};
  QTest::newRow("adding, started") << "Documents.Add" << false << QStringList{quit};
  QTest::newRow("saving, the user's own") << "SaveAs" << true << QStringList{close};
}

// A word processor that was started is always quit; the user's own is not touched by a failure.
void TestExportOffice::document_fails() {
  QFETCH(QString, at);
  QFETCH(bool, runs);
  QFETCH(QStringList, ends);
  RecordingAutomation office;
  office.runs = runs;
  office.fails_at = at;
  ExportProgress progress;
  QVERIFY_THROWS_EXCEPTION(AutomationError,
                           export_document(office, cold_store(), document_path, progress));
  const qsizetype after = office.lines.size() - ends.size();
  QVERIFY(office.lines[after - 1].contains(at));
  QCOMPARE(office.lines.mid(after), ends);
}

void TestExportOffice::wide_lines_need_a_wide_page() {
  const QString wide = QStringLiteral("Document.PageSetup.Orientation = 1");
  Recording recording = cold_store();
  QVERIFY(!document_lines(recording).contains(wide));
  recording.ChannelCount = 4;
  QCOMPARE(document_lines(recording).indexOf(wide), 3);
}

// One call for many samples, in their order, without a gap; the progress moves with them.
void TestExportOffice::many_samples_go_in_blocks() {
  RecordingAutomation office;
  ExportProgress progress;
  std::vector<int> percents;
  office.before_line = [&] {
    if (percents.empty() || percents.back() != progress.percent()) {
      percents.push_back(progress.percent());
    }
  };
  export_workbook(office, many_samples(1200), workbook_path, progress);
  const QStringList blocks = office.lines.filter(QStringLiteral("Value"));
  QCOMPARE(blocks.size(), 6);
  QVERIFY(blocks[2].startsWith(
      QStringLiteral("Sheet2.Cells(510, 1).Resize(500, 4).Value = [501, \"2006-05-12 00:08:20\"")));
  QVERIFY(blocks[5].startsWith(
      QStringLiteral("Sheet1.Cells(1002, 1).Resize(200, 5).Value = [1001, \"2006-05-12\"")));
  QCOMPARE(percents, (std::vector<int>{0, 1, 2, 3, 43, 83, 99}));

  const QStringList typed =
      document_lines(many_samples(1200)).filter(QStringLiteral("TypeText(\"\r"));
  QCOMPARE(typed.size(), 3);
  QVERIFY(typed[0].contains(QStringLiteral("\r 500   2006-05-12 00:08:19")));
  QVERIFY(typed[1].startsWith(QStringLiteral("Word.Selection.TypeText(\"\r 501   ")));
  QCOMPARE(typed[2].count(u'\r'), 200);
}

void TestExportOffice::without_samples() {
  Recording recording = cold_store();
  recording.SampleCount = 0;
  const QStringList lines = workbook_lines(recording);
  QVERIFY(lines.contains(QStringLiteral("Sheet2.Cells(5, 1) = \"End Time：\"")));
  QVERIFY(lines.filter(QStringLiteral("Value")).isEmpty());
  QVERIFY(document_lines(recording).contains(
      QStringLiteral("Word.Selection.TypeText(\"Start Time：\")")));
}

void TestExportOffice::told_to_stop() {
  RecordingAutomation office;
  ExportProgress progress;
  office.before_line = [&] {
    if (office.lines.size() == 10) progress.stop();
  };
  QVERIFY_THROWS_EXCEPTION(ExportStopped,
                           export_document(office, cold_store(), document_path, progress));
  QCOMPARE(office.lines.mid(office.lines.size() - 2),
           (QStringList{"Document.Close(SaveChanges:=0)", "Word.Quit"}));
}

namespace {
const int registered = register_test<TestExportOffice>();
}

#include "test_export_office.moc"
