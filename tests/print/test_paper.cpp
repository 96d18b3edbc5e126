// What appears on paper: the page as drawn, and the same page really printed, into a PDF file by Qt
// and through a print queue that makes PDF (with_cups_queue). Poppler's programs read text and
// picture of a PDF back.
#include <QPrintDialog>
#include <QPrinterInfo>

#include <limits>

#include "base/numbers.h"
#include "print/curve_ink.h"
#include "print/page.h"
#include "print/pdf_file.h"
#include "print/print_commands.h"
#include "print/print_view.h"
#include "print/print_world.h"
#include "views/graph_view.h"

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();

const QStringList graph_lines = {
    "Channels:4",
    "Length:100",
    "StartTime：2026-03-0108:00:00",
    "EndTime：2026-03-0109:39:00",
    "ChannelNo.4,ChannelName:Air，Unit:C,Max.:28.00,Min.:12.00,Average:20.00",
    "ChannelNo.2,ChannelName:Soil，Unit:C,Max.:48.00,Min.:32.00,Average:40.00"};

// Texts on every page of the sheet, and on its first page only.
const QStringList sheet_head = {"Logger4", "2026-03-0108:00:00to2026-03-0109:39:00",
                                "\nNumberTimeAir(C)Soil(C)"};
const QStringList sheet_information = {
    "Channels:4Length:100Printed:",
    "Statisticsofthewholerecording(120samples),notoftheprintedview(100samples)",
    "4AirC28.0012.0020.00", "2SoilC48.0032.0040.00"};

// Names, scale labels and times on the graph of channels 1 and 3.
const QStringList graph_texts = {"AirC",  "SoilC",    "30.00",    "27.50",   "10.00",
                                 "37.50", "08:25:00", "08:50:00", "09:14:00"};

// The ink along a level curve, in millimetres of portrait A4: "-" its colour, "." pale, " " none.
QString ink_along(const QImage& page, int slot, double from, double to, double y) {
  QString found;
  for (double x = from; x < to; x += 0.2) {
    int saturation = 0;
    for (int down = -2; down <= 2; ++down) {
      const QColor seen =
          page.pixelColor(int(x * page.width() / 210), int(y * page.height() / 297) + down);
      const int off = seen.hsvHue() - QColor(paper_colours[std::size_t(slot)]).hsvHue();
      if (std::abs(off) < 12) saturation = std::max(saturation, seen.hsvSaturation());
    }
    found += saturation > 120 ? u'-' : saturation > 20 ? u'.' : u' ';
  }
  return found;
}

// What the dark ink between two heights covers, in millimetres of A4 in portrait.
QRectF ink_between(const QImage& page, double from, double to) {
  const double per_mm = page.height() / 297.0;
  QRect ink;
  for (int y = int(from * per_mm); y < int(to * per_mm); ++y) {
    for (int x = 0; x < page.width(); ++x) {
      if (qGray(page.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    }
  }
  const double across = page.width() / 210.0;
  return {ink.left() / across, ink.top() / per_mm, ink.width() / across, ink.height() / per_mm};
}

QByteArray output_of(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

// One text per page, without blanks, each closed by a form feed.
QStringList texts_of(const QString& pdf) {
  return QString::fromUtf8(output_of("pdftotext", {"-layout", pdf, "-"})).remove(u' ').split(u'\f');
}

// The share of one picture's ink that has no ink nearby in the other. Two programs draw the same
// page, so edges and smoothing differ, but places do not. NaN if there is no ink.
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
  return missing / ink;
}

}  // namespace

class TestPaper : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() {
    const QString test = QTest::currentTestFunction() + QString(QTest::currentDataTag());
    const bool poppler = !QStandardPaths::findExecutable("pdftotext").isEmpty();
    if (test.startsWith("prints") && !poppler) QSKIP("poppler-utils is missing");
    const QString why = qEnvironmentVariable("CORVANE_NO_QUEUE", "not asked for");
    const bool queue = test.contains("queue");
    const bool there = qEnvironmentVariableIsSet("CORVANE_QUEUE_OUTPUT");
    if (queue && !there) QSKIP(qPrintable("no print queue: " + why));
    world_ = std::make_unique<PrintWorld>(120);
    User::recording.ViewCount = 100;
    if (!queue) world_->printer.print_to_file(file_);
  }

  // Each channel has its own height in the first half, another in the second, and dashes of its
  // own.
  void graphs() {
    for (int n = 0; n < 400; ++n) {
      const float share = float(n % 4 + 1) / 10;
      User::recording.SampleValues(n / 4, n % 4) =
          10.0F * float(n % 4 + 1) + 20 * (n < 200 ? share : 1 - share);
    }
    // Of the frames, in millimetres of A4 in portrait: height, left edge, top of the first one, and
    // the distance to the next one.
    using Row =
        std::tuple<std::array<std::int16_t, 5>, Orientation, double, double, double, double>;
    for (const auto& [channels, orientation, height, left, first, pitch] :
         {Row{{1, 1, 1, 1, 1}, Orientation::landscape, 75, 68, 90.75, 0},
          {{0, 0, 1, 0, 1}, Orientation::portrait, 75, 32, 64.75, 95.75},
          {{0, 1, 1, 0, 1}, Orientation::portrait, 55.083, 32, 70.25, 75.833},
          {{0, 1, 1, 1, 1}, Orientation::portrait, 34.75, 32, 75.75, 55.5}}) {
      User::PrintChannels = channels;
      world_->printer.set_orientation(orientation);
      const QImage page = graph_page();
      int lines = 5;
      const double middle = (left + 190) / 2;
      for (int slot = 0; slot < 4; ++slot) {
        if (channels[std::size_t(slot) + 1] == 0) continue;
        const double top = first + pitch * (lines++ - 5);
        const double high = top + height * (slot + 1) / 10;
        const double low = 2 * top + height - high;
        const QString ink = ink_along(page, slot, left + 1, middle - 1, low);
        QCOMPARE(ink.contains(u'.'), slot > 0);  // dashed
        QVERIFY(!(ink + ink_along(page, slot, middle + 1, 189, high)).contains(u' '));
        QVERIFY(ink_along(page, slot, left + 1, middle - 1, high).trimmed().isEmpty());
        // The frame is the rightmost dark ink.
        const QRectF frame = ink_between(page, top - 0.5, top + height + 0.5);
        QVERIFY(std::abs(frame.right() - 190) < 0.5);
      }
      const QRectF header = ink_between(page, 10, 14 + 5.5 * lines);
      QVERIFY(std::abs(header.left() - 32) < 0.5 && std::abs(header.top() - 16.2) < 0.5);
      QVERIFY(ink_between(page, 5, 15).isEmpty());
    }
  }

  // One sample, a scale without height, values outside: no curve.
  void odd_views() {
    User::PrintChannels = {1, 1, 0, 0, 0};
    using Row = std::tuple<int, float, float>;
    for (const auto& [shown, value, low] :
         {Row{1, 20, 10}, {100, 20, 30}, {100, 3e38F, 10}, {100, 30.05F, 10}}) {
      User::recording.ViewCount = shown;
      User::AxisLow[0] = low;
      QList<QImage> pages;
      for (const float drawn : {value, none}) {
        for (int n = 0; n < 100; ++n) User::recording.SampleValues(n, 0) = drawn;
        pages << graph_page();
      }
      QCOMPARE(pages[0], pages[1]);
    }
    // A sample outside ends the drawing: below the header's fourth line there is nothing.
    User::recording.ViewCount = Recording::max_samples + 1;
    const QImage rest = graph_page().copy(0, int(37.5 * 1123 / 297), 794, 800);
    QVERIFY(std::isnan(ink_missing(rest, rest)));
  }

  // The names say what is printed, and how.
  void prints_data() {
    QTest::addColumn<int>("pages");
    for (const auto& [name, pages] : {std::pair("graph", 1),
                                      {"separate-landscape-graph", 1},
                                      {"queue-graph-landscape", 1},
                                      {"sheet", 2},
                                      {"sheet-landscape", 2},
                                      {"queue-sheet", 1}}) {
      QTest::newRow(name) << pages;
    }
  }
  void prints() {
    QFETCH(int, pages);
    const QString name = QTest::currentDataTag();
    const bool queue = name.contains("queue");
    const bool landscape = name.contains("landscape");
    const bool is_graph = name.contains("graph");
    User::recording.Title = name;
    User::PrintChannels = {!name.contains("separate"), 1, 0, 1, 0};
    world_->printer.set_orientation(landscape ? Orientation::landscape : Orientation::portrait);
    frmGraphView graph(world_->shell);
    frmDataView sheet(world_->shell);
    Preview& preview = is_graph ? static_cast<Preview&>(graph) : sheet;
    preview.show();
    QCOMPARE(preview.area->Pic->size(), landscape ? QSize(1123, 794) : QSize(794, 1123));
    QVERIFY(is_graph ? print_graph(world_->shell) : print_sheet(world_->shell, queue ? 1 : 100));
    QVERIFY(!queue || queued(name));
    const QStringList texts = texts_of(file_);
    QCOMPARE(texts.size() - 1, pages);
    for (int page = 0; page < pages; ++page) {
      QVERIFY(!texts[page].contains("Humidity") && !texts[page].contains("Wall"));
      sheet.show_page(page);
      const QImage shown = preview.area->picture();
      const QString number = QString::number(page + 1);
      QImage printed =
          QImage::fromData(output_of("pdftoppm", {"-r", "96", "-f", number, "-l", number, file_}));
      // The queue turns the paper, not the page.
      if (landscape && queue) printed = printed.transformed(QTransform().rotate(90));
      QVERIFY(ink_missing(shown, printed) < 0.02 && ink_missing(printed, shown) < 0.02);
      if (is_graph) continue;
      QVERIFY(texts[page].startsWith(name + "Page" + number + "of2\n"));
      for (const QString& text : sheet_head) QVERIFY2(texts[page].contains(text), qPrintable(text));
      for (const QString& text : sheet_information) {
        QVERIFY2(texts[page].contains(text) == (page == 0), qPrintable(text));
      }
    }
    if (!is_graph) return every_row_is_in(texts.join(u'\n'), 0, queue ? 86 : 100);
    for (const QString& text : graph_lines + graph_texts + QStringList("Title：" + name)) {
      QVERIFY2(texts[0].contains(text), qPrintable(text));
    }
  }

  // In a view that begins at sample 20 each sample keeps its number.
  void prints_a_scrolled_view() {
    User::PrintChannels = {1, 1, 0, 1, 0};
    PrintedView view = printed_view(world_->shell);
    view.start = 20;
    PdfFile pdf(file_, Orientation::portrait);
    print_sheet(pdf, view, 100);
    const QString sheet = texts_of(file_).join(u'\n');
    every_row_is_in(sheet, 20, 120);
    QVERIFY(sheet.contains("2026-03-0108:20:00to2026-03-0109:59:00"));
    print_graph(pdf, view);
    QVERIFY(texts_of(file_)[0].contains("\nStartTime：2026-03-0108:20:00\n"));
  }

  // The screen's labels, computed in single precision: "22.45", where double gives "22.46".
  void scale_of_the_screen() {
    const ChannelScale screen = channel_scale(std::array{1.0F}, ScaleLimits{34.38F, 2.58F});
    User::AxisHigh[0] = screen.high;
    User::AxisLow[0] = screen.low;
    User::PrintChannels = {1, 1, 0, 0, 0};
    PdfFile pdf(file_, Orientation::portrait);
    print_graph(pdf, printed_view(world_->shell));
    const QString page = texts_of(file_)[0];
    for (const QString& label : screen.labels) QVERIFY2(page.contains(label), qPrintable(label));
  }

  // Names are cut, but neither their units nor numbers.
  void long_texts_on_the_sheet() {
    const QString name(60, u'n');
    const QString number = fixed2(-3e38F);
    User::recording.Title = User::recording.RecorderName = QString(300, u't');
    User::recording.ChannelInfo[1].fill(name);
    for (int c = 0; c < 4; ++c) User::recording.SampleValues(7, c) = -3e38F;
    User::recording.ChannelStats[1].fill(-3e38F);
    PdfFile pdf(file_, Orientation::portrait);
    print_sheet(pdf, printed_view(world_->shell), 1);
    const QString text = texts_of(file_)[0];
    QVERIFY(text.contains("…Page1of") && text.contains("…2026-03-0108:00:00to"));
    QVERIFY(text.contains("nn…(%RH)") && !text.contains(name + "(%RH)"));
    QCOMPARE(text.count(number), 8);
  }

  // Calm curves of few samples are dashed, all others solid.
  void dashes() {
    for (const auto& [samples, waves, dashed] :
         {std::tuple(100, 4, true), {400, 4, true}, {470, 4, false}, {300, 60, false}}) {
      std::vector<float> values;
      for (int n = 0; n < samples; ++n) {
        values.push_back(std::sin(6.28F * float(n * waves) / float(samples)));
      }
      const CurvePlace place = {{122 * twips_per_mm, 75 * twips_per_mm}, 1, -1};
      QCOMPARE(is_dashed({values.data(), 1, samples}, place), dashed);
    }
  }

  // Printer Set does not ask what to print; its paper and orientation hold, also for previews.
  void queue_setup() {
    QtPrinter printer;
    printer.set_paper_a4();
    set_up(printer, "Letter");
    printer.prefer_paper_a4();
    QCOMPARE((printer.paper_size() / twips_per_mm).toSize(), QSize(279, 216));
    const QPaintDevice* device = printer.start_document("copies").device();
    QCOMPARE(static_cast<const QPrinter*>(device)->copyCount(), 1);
    printer.abort_document();
    printer.set_paper_a4();
    QCOMPARE((printer.paper_size() / twips_per_mm).toSize(), QSize(297, 210));
  }

  // The queue refuses, then it is deleted: so this comes after all other tests that use it.
  void queue_faults() {
    QCOMPARE(QProcess::execute("cupsreject", {"corvane"}), 0);
    QVERIFY(!print_graph(world_->shell));
    QCOMPARE(QProcess::execute("cupsaccept", {"corvane"}), 0);
    QCOMPARE(QProcess::execute("lpadmin", {"-x", "corvane"}), 0);
    QVERIFY(!print_graph(world_->shell));
    QCOMPARE(world_->messages, printer_error + printer_error);
    // A printer that is not the default one can be chosen.
    QCOMPARE(QProcess::execute("lpadmin", {"-p", "other", "-E", "-v", "file:/dev/null"}), 0);
    QVERIFY(QPrinterInfo::defaultPrinter().isNull());
    QtPrinter printer;
    QVERIFY_THROWS_EXCEPTION(PrinterError, printer.orientation());
    set_up(printer, "A4");
    print_graph(printer, printed_view(world_->shell));
  }

  // A file that cannot be written, and no printer at all.
  void no_printer() {
    world_->printer.print_to_file(folder_.filePath("none/graph.pdf"));
    QVERIFY(!print_graph(world_->shell) && world_->messages == printer_error);
    if (!QPrinterInfo::defaultPrinter().isNull()) QSKIP("this computer has a default printer");
    const PrintWorld without;
    frmGraphView preview(without.shell);
    preview.show();
    QVERIFY(!print_graph(without.shell) && preview.area->Pic->size() == QSize(794, 1123));
  }

 private:
  QImage graph_page() {
    frmGraphView preview(world_->shell);
    preview.show();
    return preview.area->picture();
  }

  // One row per sample, from sample `first` to before sample `last`.
  static void every_row_is_in(const QString& text, int first, int last) {
    const Recording& recording = User::recording;
    for (int n = first; n < last; ++n) {
      const QString row = QString::number(n + 1) + QString(recording.SampleTimes(n)).remove(u' ') +
                          fixed2(recording.SampleValues(n, 0)) +
                          fixed2(recording.SampleValues(n, 2));
      QCOMPARE(text.count(row), 1);
    }
  }

  // Chooses this paper, in landscape, in the printer's dialog.
  static void set_up(QtPrinter& printer, const QString& paper) {
    const auto script = when_shown<QPrintDialog>([&](QPrintDialog& dialog) {
      for (auto* button : dialog.findChildren<QPushButton*>()) {
        if (button->text().contains("Options")) press(button);
      }
      for (const char* control :
           {"printRange", "pagesLineEdit", "pageSetCombo", "copies", "reverse"}) {
        const auto* found = dialog.findChild<QWidget*>(control);
        QVERIFY2(found && !found->isVisible(), control);
      }
      QVERIFY(dialog.findChild<QWidget*>("tabs")->isVisible());
      dialog.findChild<QSpinBox*>("copies")->setValue(3);
      const auto properties = when_shown<QDialog>([paper](QDialog& sheet) {
        auto* sizes = sheet.findChild<QComboBox*>("pageSizeCombo");
        for (int i = 0; i < sizes->count(); ++i) {
          if (sizes->itemText(i).contains(paper)) sizes->setCurrentIndex(i);
        }
        sheet.findChild<QRadioButton*>("landscape")->click();
        sheet.accept();
      });
      press(dialog.findChild<QPushButton*>("properties"));
      press(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
    });
    QVERIFY_THROWS_NO_EXCEPTION(printer.show_setup(nullptr));
  }

  // Waits for the document that the queue makes and moves it to `file_`.
  bool queued(const QString& title) const {
    const QDir made(qEnvironmentVariable("CORVANE_QUEUE_OUTPUT"));
    QFile::remove(file_);
    const auto take = [&] {
      const QString pdf = made.filePath(made.entryList({u'*' + title + "*.pdf"}).value(0));
      return texts_of(pdf).size() > 1 && QFile::rename(pdf, file_);
    };
    return QTest::qWaitFor(take, 30'000);
  }

  std::unique_ptr<PrintWorld> world_;
  QTemporaryDir folder_;
  QString file_ = folder_.filePath("printed.pdf");
};

const int registered_paper = register_test<TestPaper>();

#include "test_paper.moc"
