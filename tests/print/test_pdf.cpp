// Prints for real: into a PDF file of Qt's own, and through a print queue that makes PDF
// (with_cups_queue). Text and picture of the PDF are read back by Poppler's programs.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "app/user.h"
#include "print/frmDataView.h"
#include "print/frmGraphView.h"
#include "print/qt_printer.h"
#include "print/sample_recording.h"
#include "support/dialogs.h"
#include "support/fake_shell.h"
#include "support/runner.h"

namespace {

QByteArray output_of(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

QString text_of(const QString& pdf, int page) {
  const QString number = QString::number(page);
  return QString::fromUtf8(
      output_of(QStringLiteral("pdftotext"), {"-layout", "-f", number, "-l", number, pdf, "-"}));
}

// A page at the preview's 96 pixels an inch.
QImage picture_of(const QString& pdf, int page) {
  const QString number = QString::number(page);
  QImage image;
  image.loadFromData(
      output_of(QStringLiteral("pdftoppm"), {"-png", "-r", "96", "-f", number, "-l", number, pdf}),
      "PNG");
  return image.convertToFormat(QImage::Format_RGB32);
}

int pages_of(const QString& pdf) {
  static const QRegularExpression pages(QStringLiteral("Pages:\\s*(\\d+)"));
  return pages.match(QString::fromUtf8(output_of(QStringLiteral("pdfinfo"), {pdf})))
      .captured(1)
      .toInt();
}

// The share of ink of one picture that has no ink near by in the other: two programs draw the same
// page, so edges and smoothing differ, places do not.
double ink_missing(const QImage& from, const QImage& in) {
  constexpr int near = 2;
  const auto is_ink = [](const QImage& image, int x, int y) {
    return image.valid(x, y) && qGray(image.pixel(x, y)) < 170;
  };
  int ink = 0;
  int missing = 0;
  for (int y = 0; y < from.height(); ++y) {
    for (int x = 0; x < from.width(); ++x) {
      if (!is_ink(from, x, y)) continue;
      ++ink;
      bool found = false;
      for (int dy = -near; dy <= near && !found; ++dy) {
        for (int dx = -near; dx <= near && !found; ++dx) found = is_ink(in, x + dx, y + dy);
      }
      missing += !found;
    }
  }
  return ink == 0 ? 1 : double(missing) / ink;
}

const QStringList header = {
    "Title：Cold store 7",
    "Channels:4",
    "Length:100",
    "Start Time：2026-05-12 13:45:30",
    "End Time：2026-05-12 15:24:30",
    "Channel No.4,Channel Name:Air，Unit:C,Max.:28.00,Min.:12.00,Average:20.00",
    "Channel No.2,Channel Name:Soil，Unit:C,Max.:48.00,Min.:32.00,Average:40.00"};

}  // namespace

class TestPdf : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void initTestCase();
  void init();
  void graph_data();
  void graph();
  void sheet_data();
  void sheet();
  void a_full_recording_stays_small();
  void an_unwritable_file();
  void queue_graph();
  void queue_sheet();
  void queue_refuses();
  void queue_gone();
  void no_default_printer();

 private:
  void orient(bool landscape);
  // The document that the queue makes; empty when none comes.
  QString queued(const QString& title);
  QString no_queue() const;

  std::unique_ptr<FakeShell> shell_;
  std::unique_ptr<QtPrinter> printer_;
  QTemporaryDir folder_;
};

void TestPdf::initTestCase() {
  if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
    QSKIP("PDF cannot be read back: poppler-utils is not installed");
  }
}

void TestPdf::init() {
  shell_ = std::make_unique<FakeShell>();
  printer_ = std::make_unique<QtPrinter>();
  shell_->real_printer = printer_.get();
  User::recording = Recording();
  fill_recording(User::recording, 100, 4);
  User::AxisHigh = {30, 40, 50, 60, 0};
  User::AxisLow = {10, 20, 30, 40, 0};
  User::PrintChannels = {1, 1, 0, 1, 0};
}

void TestPdf::orient(bool landscape) {
  printer_->set_orientation(landscape ? Orientation::landscape : Orientation::portrait);
}

void TestPdf::graph_data() {
  QTest::addColumn<bool>("landscape");
  QTest::addColumn<bool>("combined");
  QTest::newRow("portrait, combined") << false << true;
  QTest::newRow("portrait, separate") << false << false;
  QTest::newRow("landscape, combined") << true << true;
  QTest::newRow("landscape, separate") << true << false;
}

void TestPdf::graph() {
  QFETCH(bool, landscape);
  QFETCH(bool, combined);
  User::PrintChannels[0] = combined ? 1 : 0;
  const QString pdf = folder_.filePath(QStringLiteral("graph.pdf"));
  printer_->print_to_file(pdf);
  orient(landscape);
  frmGraphView preview(*shell_);
  preview.show();
  QVERIFY(preview.print());
  QCOMPARE(pages_of(pdf), 1);

  const QString text = text_of(pdf, 1);
  for (const QString& line : header) QVERIFY2(text.contains(line), qPrintable(line));
  QVERIFY(!text.contains(QStringLiteral("Damp")) && !text.contains(QStringLiteral("wall")));
  for (const char* part : {"Air C", "Soil C", "30.00", "27.50", "10.00", "37.50"}) {
    QVERIFY2(text.contains(QLatin1String(part)), part);
  }
  const auto times = text.count(QStringLiteral("2026-05-12")) - 2;
  QCOMPARE(times, combined ? 5 : 10);
  QVERIFY(text.contains(QStringLiteral("14:35:30")));

  const QImage picture = picture_of(pdf, 1);
  const QImage shown = preview.area->picture();
  QVERIFY2((picture.size() - shown.size()).width() <= 1, "size");
  QVERIFY2(ink_missing(shown, picture) < 0.01,
           qPrintable(QString::number(ink_missing(shown, picture))));
  QVERIFY2(ink_missing(picture, shown) < 0.01,
           qPrintable(QString::number(ink_missing(picture, shown))));
}

void TestPdf::sheet_data() {
  QTest::addColumn<bool>("landscape");
  QTest::addColumn<int>("pages");
  QTest::newRow("portrait") << false << 3;
  QTest::newRow("landscape") << true << 4;
}

void TestPdf::sheet() {
  QFETCH(bool, landscape);
  QFETCH(int, pages);
  const QString pdf = folder_.filePath(QStringLiteral("sheet.pdf"));
  printer_->print_to_file(pdf);
  orient(landscape);
  frmDataView preview(*shell_);
  preview.show();
  QVERIFY(preview.print(100));
  QCOMPARE(pages_of(pdf), pages);

  int number = 0;
  for (int page = 1; page <= pages; ++page) {
    const QString text = text_of(pdf, page);
    for (const QString& line : header) QCOMPARE(text.contains(line), page == 1);
    QVERIFY(
        text.contains(QRegularExpression(QStringLiteral("Number +Time +Air\\(C\\) +Soil\\(C\\)"))));
    QVERIFY(text.contains(QRegularExpression(QStringLiteral("%1 ?/ ?%2").arg(page).arg(pages))));
    static const QRegularExpression row(
        QStringLiteral("^ *(\\d+) +2026-05-12 \\d\\d:\\d\\d:30 +-?\\d+\\.\\d\\d +-?\\d+\\.\\d\\d$"),
        QRegularExpression::MultilineOption);
    for (auto rows = row.globalMatch(text); rows.hasNext();) {
      QCOMPARE(rows.next().captured(1).toInt(), ++number);
    }
    preview.show_page(page - 1);
    QVERIFY(ink_missing(preview.area->picture(), picture_of(pdf, page)) < 0.01);
  }
  QCOMPARE(number, 100);
}

// Noise over the whole frame is the most ink that there can be.
void TestPdf::a_full_recording_stays_small() {
  constexpr qint64 two_megabytes = 2'000'000;
  fill_recording(User::recording, Recording::max_samples, 4);
  for (int n = 0; n < Recording::max_samples; ++n) {
    for (int c = 0; c < 4; ++c) {
      User::recording.SampleValues(n, c) = static_cast<float>(10 * (c + 1) + n * 7919 % 2003 / 100);
    }
  }
  User::PrintChannels = {1, 1, 1, 1, 1};
  const QString pdf = folder_.filePath(QStringLiteral("full.pdf"));
  printer_->print_to_file(pdf);
  QVERIFY(frmGraphView(*shell_).print());
  const qint64 size = QFile(pdf).size();
  QVERIFY2(size > 0 && size < two_megabytes, qPrintable(QString::number(size)));
}

void TestPdf::an_unwritable_file() {
  printer_->print_to_file(folder_.filePath(QStringLiteral("none/graph.pdf")));
  frmGraphView preview(*shell_);
  QVERIFY(!preview.print());
  QCOMPARE(shell_->scripted_messages.shown, QStringList{"Corvane: Default Printer Error"});
}

// Why there is no queue; empty where there is one.
QString TestPdf::no_queue() const {
  if (qEnvironmentVariableIsSet("CORVANE_QUEUE_OUTPUT")) return {};
  return QStringLiteral("no print queue: ") +
         qEnvironmentVariable("CORVANE_NO_QUEUE", QStringLiteral("not run by with_cups_queue"));
}

QString TestPdf::queued(const QString& title) {
  const QDir output(qEnvironmentVariable("CORVANE_QUEUE_OUTPUT"));
  QString found;
  const bool came = QTest::qWaitFor(
      [&] {
        const QStringList files = output.entryList({QStringLiteral("*%1*.pdf").arg(title)});
        if (files.isEmpty()) return false;
        found = output.filePath(files.constFirst());
        return pages_of(found) > 0;
      },
      30'000);
  if (!came) return {};
  const QString copy = folder_.filePath(title + QStringLiteral(".pdf"));
  QFile::copy(found, copy);
  QFile::remove(found);
  return copy;
}

void TestPdf::queue_graph() {
  if (!no_queue().isEmpty()) QSKIP(qPrintable(no_queue()));
  orient(true);
  User::recording.Title = QStringLiteral("graphfromqueue");
  frmGraphView preview(*shell_);
  preview.show();
  QVERIFY(preview.print());
  const QString pdf = queued(User::recording.Title);
  QCOMPARE(pages_of(pdf), 1);
  const QString text = text_of(pdf, 1);
  for (const QString& line : header.mid(1)) QVERIFY2(text.contains(line), qPrintable(line));
  const QImage shown = preview.area->picture();
  QVERIFY(shown.width() > shown.height());
  QImage printed = picture_of(pdf, 1);
  // The queue turns the paper, not the page.
  if (printed.width() < printed.height()) printed = printed.transformed(QTransform().rotate(90));
  const double missing = ink_missing(shown, printed);
  QVERIFY2(missing < 0.02, qPrintable(QString::number(missing)));
}

void TestPdf::queue_sheet() {
  if (!no_queue().isEmpty()) QSKIP(qPrintable(no_queue()));
  orient(false);
  User::recording.Title = QStringLiteral("sheetfromqueue");
  frmDataView preview(*shell_);
  preview.show();
  QVERIFY(preview.print(2));
  const QString pdf = queued(User::recording.Title);
  QCOMPARE(pages_of(pdf), 2);
  QVERIFY(text_of(pdf, 2).contains(QRegularExpression(QStringLiteral("2 ?/ ?3"))));
  preview.show_page(1);
  QVERIFY(ink_missing(preview.area->picture(), picture_of(pdf, 2)) < 0.02);
}

void TestPdf::queue_refuses() {
  if (!no_queue().isEmpty()) QSKIP(qPrintable(no_queue()));
  QCOMPARE(QProcess::execute(QStringLiteral("cupsreject"), {"corvane"}), 0);
  frmGraphView preview(*shell_);
  const bool printed = preview.print();
  QCOMPARE(QProcess::execute(QStringLiteral("cupsaccept"), {"corvane"}), 0);
  QVERIFY(!printed);
  QCOMPARE(shell_->scripted_messages.shown, QStringList{"Corvane: Default Printer Error"});
}

// The last but one that uses the queue, since it takes it away.
void TestPdf::queue_gone() {
  if (!no_queue().isEmpty()) QSKIP(qPrintable(no_queue()));
  orient(false);
  QCOMPARE(QProcess::execute(QStringLiteral("lpadmin"), {"-x", "corvane"}), 0);
  frmGraphView preview(*shell_);
  QVERIFY(!preview.print());
  QCOMPARE(shell_->scripted_messages.shown, QStringList{"Corvane: Default Printer Error"});
}

void TestPdf::no_default_printer() {
  if (!QPrinterInfo::defaultPrinter().isNull()) QSKIP("this computer has a default printer");
  frmGraphView preview(*shell_);
  preview.show();
  QCOMPARE(preview.area->Pic->size(), QSize(794, 1123));
  press(preview.cmdPrint);
  QCOMPARE(shell_->scripted_messages.shown, QStringList{"Corvane: Default Printer Error"});
  QVERIFY(preview.isVisible());
}

const int registered_pdf = register_test<TestPdf>();

#include "test_pdf.moc"
