// Prints for real: into a PDF file of Qt's own, and through a print queue that makes PDF
// (with_cups_queue). Text and picture of the PDF are read back by Poppler's programs.
#include <QDir>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "app/numbers.h"
#include "print/print_world.h"
#include "print/qt_printer.h"

namespace {

const QStringList header = {
    "Channels:4",
    "Length:100",
    "StartTime：2026-05-1213:45:30",
    "EndTime：2026-05-1215:24:30",
    "ChannelNo.4,ChannelName:Air，Unit:C,Max.:28.00,Min.:12.00,Average:20.00",
    "ChannelNo.2,ChannelName:Soil，Unit:C,Max.:48.00,Min.:32.00,Average:40.00"};

QByteArray output_of(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

// A text a page, without blanks, each closed by a form feed.
QStringList texts_of(const QString& pdf) {
  return QString::fromUtf8(output_of("pdftotext", {"-layout", pdf, "-"})).remove(u' ').split(u'\f');
}

// A page at the preview's 96 pixels an inch.
QImage picture_of(const QString& pdf, const QString& page) {
  return QImage::fromData(output_of("pdftoppm", {"-r", "96", "-f", page, "-l", page, pdf}));
}

// The share of ink of one picture that has no ink near by in the other: two programs draw the same
// page, so edges and smoothing differ, places do not.
double ink_missing(const QImage& from, const QImage& in) {
  QImage near = from;
  near.fill(Qt::white);
  QPainter painter(&near);
  painter.setCompositionMode(QPainter::CompositionMode_Darken);
  for (int i = 0; i < 25; ++i) painter.drawImage(i % 5 - 2, i / 5 - 2, in);
  double ink = 0;
  double missing = 0;
  for (int i = 0; i < from.width() * from.height(); ++i) {
    const QPoint at(i % from.width(), i / from.width());
    if (qGray(from.pixel(at)) >= 170) continue;
    ++ink;
    missing += qGray(near.pixel(at)) >= 170;
  }
  return ink == 0 ? 1 : missing / ink;
}

}  // namespace

class TestPdf : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    const QString test = QTest::currentTestFunction() + QString(QTest::currentDataTag());
    if (QStandardPaths::findExecutable("pdftotext").isEmpty()) QSKIP("poppler-utils is missing");
    const QString why = qEnvironmentVariable("CORVANE_NO_QUEUE", "not asked for");
    const bool queue = qEnvironmentVariableIsSet("CORVANE_QUEUE_OUTPUT");
    if (test.contains("queue") && !queue) QSKIP(qPrintable("no print queue: " + why));
    world_ = std::make_unique<PrintWorld>(120);
    User::recording.ViewCount = 100;
    printer_ = std::make_unique<QtPrinter>();
    world_->shell.real_printer = printer_.get();
    User::PrintChannels = {1, 1, 0, 1, 0};
  }

  // The names say what is printed, and how.
  void prints_data() {
    QTest::addColumn<int>("pages");
    const auto row = [](const char* name, int pages) { QTest::newRow(name) << pages; };
    for (const char* name : {"graph", "graph-separate", "graph-landscape",
                             "separate-landscape-graph", "queue-graph-landscape"})
      row(name, 1);
    row("sheet", 3);
    row("sheet-landscape", 4);
    row("queue-sheet", 2);
  }
  void prints() {
    QFETCH(int, pages);
    const QString name = QTest::currentDataTag();
    const bool queue = name.contains("queue");
    const bool landscape = name.contains("landscape");
    const bool combined = !name.contains("separate");
    User::recording.Title = name;
    User::PrintChannels[0] = combined;
    if (!queue) printer_->print_to_file(file_);
    printer_->set_orientation(landscape ? Orientation::landscape : Orientation::portrait);
    frmGraphView graph(world_->shell);
    frmDataView sheet(world_->shell);
    const bool is_graph = name.contains("graph");
    Preview& preview = is_graph ? static_cast<Preview&>(graph) : sheet;
    preview.show();
    QCOMPARE(preview.area->Pic->size(), landscape ? QSize(1123, 794) : QSize(794, 1123));
    QCOMPARE(graph.area->HScroll1->value(), is_graph && !landscape ? 5 : 0);
    QVERIFY(is_graph ? graph.print() : sheet.print(queue ? 2 : 100));
    QVERIFY(!queue || queued(name));
    const QStringList texts = texts_of(file_);
    QCOMPARE(texts.size() - 1, pages);
    QVERIFY(texts[0].contains("Title：" + name));
    for (int page = 0; page < pages; ++page) {
      for (const QString& line : header) QCOMPARE(texts[page].contains(line), page == 0);
      QVERIFY(!texts[page].contains("Damp") && !texts[page].contains("wall"));
      sheet.show_page(page);
      const QImage shown = preview.area->picture();
      QImage printed = picture_of(file_, QString::number(page + 1));
      // The queue turns the paper, not the page.
      if (landscape && queue) printed = printed.transformed(QTransform().rotate(90));
      QVERIFY(ink_missing(shown, printed) < 0.02 && ink_missing(printed, shown) < 0.02);
    }
    if (is_graph) {
      for (const char* part : {"AirC", "SoilC", "30.00", "27.50", "10.00", "37.50", "14:35:30"}) {
        QVERIFY(texts[0].contains(part));
      }
      QCOMPARE(texts[0].count("2026-05-12") - 2, combined ? 5 : 10);
    } else {
      check_sheet(texts, sheet.Label1->text().section("/ ", 1));
    }
  }

  void a_full_recording_stays_small() {
    const PrintWorld full(Recording::max_samples);
    printer_->print_to_file(file_);
    QVERIFY(frmGraphView(world_->shell).print());
    QVERIFY(QFile(file_).size() > 0 && QFile(file_).size() < 2'000'000);
  }

  // A queue that refuses, then none: the last but one that uses it.
  void queue_faults() {
    QCOMPARE(QProcess::execute("cupsreject", {"corvane"}), 0);
    QVERIFY(!frmGraphView(world_->shell).print());
    QCOMPARE(QProcess::execute("cupsaccept", {"corvane"}), 0);
    QCOMPARE(QProcess::execute("lpadmin", {"-x", "corvane"}), 0);
    QVERIFY(!frmGraphView(world_->shell).print());
    QCOMPARE(world_->messages, printer_error + printer_error);
  }

  // A file that cannot be written, and no printer at all.
  void no_printer() {
    QtPrinter none;
    frmGraphView preview(world_->shell);
    printer_->print_to_file(folder_.filePath("none/graph.pdf"));
    QVERIFY(!preview.print() && world_->messages == printer_error);
    if (!QPrinterInfo::defaultPrinter().isNull()) QSKIP("this computer has a default printer");
    world_->shell.real_printer = &none;
    preview.show();
    QVERIFY(!preview.print() && preview.area->Pic->size() == QSize(794, 1123));
  }

 private:
  // Each page has the table's head and its number, each sample a row on one of them.
  static void check_sheet(const QStringList& texts, const QString& of) {
    for (int page = 1; page < texts.size(); ++page) {
      QVERIFY(texts[page - 1].contains("NumberTimeAir(C)Soil(C)"));
      QVERIFY(texts[page - 1].contains(QStringLiteral("\n%1/%2\n").arg(page).arg(of)));
    }
    Recording& recording = User::recording;
    for (int n = 0; n < (texts.size() > 3 ? 100 : 50); ++n) {
      const QString values =
          fixed2(recording.SampleValues(n, 0)) + fixed2(recording.SampleValues(n, 2));
      const QString row = QString::number(n + 1) + recording.SampleTimes(n).remove(u' ') + values;
      QCOMPARE(texts.join(u'\n').count(u'\n' + row + u'\n'), 1);
    }
  }

  // Waits for the document that the queue makes, and takes it.
  bool queued(const QString& title) const {
    const QDir made(qEnvironmentVariable("CORVANE_QUEUE_OUTPUT"));
    QFile::remove(file_);
    return QTest::qWaitFor(
        [&] {
          const QString pdf = made.filePath(made.entryList({u'*' + title + "*.pdf"}).value(0));
          return texts_of(pdf).size() > 1 && QFile::rename(pdf, file_);
        },
        30'000);
  }

  std::unique_ptr<PrintWorld> world_;
  std::unique_ptr<QtPrinter> printer_;
  QTemporaryDir folder_;
  QString file_ = folder_.filePath("printed.pdf");
};

const int registered_pdf = register_test<TestPdf>();

#include "test_pdf.moc"
