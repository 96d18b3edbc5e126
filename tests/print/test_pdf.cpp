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

struct Row {
  const char* name;
  bool graph;
  bool landscape;
  bool combined;
  int pages;
};

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
  const auto is_ink = [](const QImage& image, int x, int y) {
    return image.valid(x, y) && qGray(image.pixel(x, y)) < 170;
  };
  int ink = 0;
  int missing = 0;
  for (int i = 0; i < from.width() * from.height(); ++i) {
    const QPoint at(i % from.width(), i / from.width());
    if (!is_ink(from, at.x(), at.y())) continue;
    bool found = false;
    for (int k = 0; k < 25 && !found; ++k) {
      found = is_ink(in, at.x() + k % 5 - 2, at.y() + k / 5 - 2);
    }
    ++ink;
    missing += !found;
  }
  return ink == 0 ? 1 : double(missing) / ink;
}

}  // namespace

class TestPdf : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    const QString test = QTest::currentTestFunction() + QString(QTest::currentDataTag());
    if (QStandardPaths::findExecutable("pdftotext").isEmpty()) QSKIP("poppler-utils is missing");
    if (test.contains("queue") && !qEnvironmentVariableIsSet("CORVANE_QUEUE_OUTPUT")) {
      QSKIP(qPrintable("no print queue: " +
                       qEnvironmentVariable("CORVANE_NO_QUEUE", "not asked for")));
    }
    world_ = std::make_unique<PrintWorld>();
    printer_ = std::make_unique<QtPrinter>();
    world_->shell.real_printer = printer_.get();
    User::PrintChannels = {1, 1, 0, 1, 0};
  }

  void prints_data() {
    add_rows<Row>({{"graph", true, false, true, 1},
                   {"graph-separate", true, false, false, 1},
                   {"graph-landscape", true, true, true, 1},
                   {"graph-landscape-separate", true, true, false, 1},
                   {"sheet", false, false, true, 3},
                   {"sheet-landscape", false, true, true, 4},
                   {"queue-graph", true, true, true, 1},
                   {"queue-sheet", false, false, true, 2}});
  }
  void prints() {
    QFETCH(Row, row);
    const bool queue = row.name[0] == 'q';
    User::recording.Title = row.name;
    User::PrintChannels[0] = row.combined;
    if (!queue) printer_->print_to_file(file_);
    printer_->set_orientation(row.landscape ? Orientation::landscape : Orientation::portrait);
    frmGraphView graph(world_->shell);
    frmDataView sheet(world_->shell);
    Preview& preview = row.graph ? static_cast<Preview&>(graph) : sheet;
    preview.show();
    QCOMPARE(preview.area->Pic->size(), row.landscape ? QSize(1123, 794) : QSize(794, 1123));
    QCOMPARE(graph.area->HScroll1->value(), row.graph && !row.landscape ? 5 : 0);
    QVERIFY(row.graph ? graph.print() : sheet.print(queue ? 2 : 100));
    QVERIFY(!queue || queued(row.name));
    const QStringList texts = texts_of(file_);
    QCOMPARE(texts.size() - 1, row.pages);
    for (int page = 0; page < row.pages; ++page) {
      for (QString line :
           {QString("Title：") + row.name, QString("Channels:4"), QString("Length:100"),
            QString("Start Time：2026-05-12 13:45:30"), QString("End Time：2026-05-12 15:24:30"),
            QString("Channel No.4,Channel Name:Air，Unit:C,Max.:28.00,Min.:12.00,Average:20.00"),
            QString(
                "Channel No.2,Channel Name:Soil，Unit:C,Max.:48.00,Min.:32.00,Average:40.00")}) {
        QCOMPARE(texts[page].contains(line.remove(u' ')), page == 0);
      }
      QVERIFY(!texts[page].contains("Damp") && !texts[page].contains("wall"));
      sheet.show_page(page);
      const QImage shown = preview.area->picture();
      QImage printed = picture_of(file_, QString::number(page + 1));
      // The queue turns the paper, not the page.
      if (row.landscape && queue) printed = printed.transformed(QTransform().rotate(90));
      QVERIFY(ink_missing(shown, printed) < 0.02 && ink_missing(printed, shown) < 0.02);
      const QString foot = QStringLiteral("\n%1/%2\n").arg(page + 1).arg(row.pages + queue);
      QVERIFY(row.graph ||
              (texts[page].contains("NumberTimeAir(C)Soil(C)") && texts[page].contains(foot)));
    }
    for (const char* part : {"AirC", "SoilC", "30.00", "27.50", "10.00", "37.50", "14:35:30"}) {
      QVERIFY(!row.graph || texts[0].contains(part));
    }
    QVERIFY(!row.graph || texts[0].count("2026-05-12") - 2 == (row.combined ? 5 : 10));
    for (int n = 0; n < 100 && !row.graph && !queue; ++n) {
      const QString line = QString::number(n + 1) + User::recording.SampleTimes(n).remove(u' ') +
                           fixed2(User::recording.SampleValues(n, 0)) +
                           fixed2(User::recording.SampleValues(n, 2));
      QVERIFY(texts.join(u'\n').contains(u'\n' + line + u'\n'));
    }
  }

  void files() {
    fill_recording(User::recording, Recording::max_samples, 4);
    User::PrintChannels = {1, 1, 1, 1, 1};
    frmGraphView preview(world_->shell);
    printer_->print_to_file(file_);
    QVERIFY(preview.print() && QFile(file_).size() > 0 && QFile(file_).size() < 2'000'000);
    printer_->print_to_file(folder_.filePath("none/graph.pdf"));
    QVERIFY(!preview.print() && world_->messages == printer_error);
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

  void no_default_printer() {
    if (!QPrinterInfo::defaultPrinter().isNull()) QSKIP("this computer has a default printer");
    frmGraphView preview(world_->shell);
    preview.show();
    QCOMPARE(preview.area->Pic->size(), QSize(794, 1123));
    press(preview.cmdPrint);
    QVERIFY(preview.isVisible() && world_->messages == printer_error);
  }

 private:
  // Waits for the document that the queue makes, and takes it.
  bool queued(const QString& title) const {
    const QDir output(qEnvironmentVariable("CORVANE_QUEUE_OUTPUT"));
    QFile::remove(file_);
    const auto come = [&] {
      const QString made = output.entryList({u'*' + title + "*.pdf"}).value(0);
      return texts_of(output.filePath(made)).size() > 1 &&
             QFile::rename(output.filePath(made), file_);
    };
    return QTest::qWaitFor(come, 30'000);
  }

  std::unique_ptr<PrintWorld> world_;
  std::unique_ptr<QtPrinter> printer_;
  QTemporaryDir folder_;
  QString file_ = folder_.filePath("printed.pdf");
};

const int registered_pdf = register_test<TestPdf>();

#include "test_pdf.moc"
