// Benchmarks of the largest Recording's pages, on the screen and into PDF, against plain drawing.
#include <QPainter>
#include <QTest>

#include "base/numbers.h"
#include "print/curve_ink.h"
#include "print/graph_page.h"
#include "print/page.h"
#include "print/pdf_file.h"
#include "print/print_commands.h"
#include "print/print_view.h"
#include "print/print_world.h"
#include "print/sheet_pages.h"
#include "suite.h"

namespace {

constexpr int channels = Recording::max_channels;

// Curves with noise over most of the frame: the most ink possible.
void fill_with_noise() {
  const PrintWorld world(Recording::max_samples);
  for (int n = 0; n < Recording::max_samples; ++n) {
    for (int c = 0; c < channels; ++c) {
      User::recording.SampleValues(n, c) += static_cast<float>(n * 7919 % 997) / 100.0F;
    }
  }
  User::AxisHigh = {40, 50, 60, 70, 0};
  User::AxisLow = {10, 20, 30, 40, 0};
}

// Draws every sample as a point of one line per channel, as thin as possible, and nothing else.
void draw_every_sample(QPainter& painter, QSizeF size) {
  const GraphPlace place = graph_places({0, 1, 2, 3}, true, 9).front();
  const Page page(size);
  const QRectF frame(QPointF(page.across(place.frame_left), page.down(place.frame_top)),
                     QPointF(page.across(190), page.down(place.frame_top + place.frame_height)));
  for (std::size_t c = 0; c < channels; ++c) {
    const double scale = frame.height() / (User::AxisHigh[c] - User::AxisLow[c]);
    QPolygonF line;
    for (int n = 0; n < Recording::max_samples; ++n) {
      const float value = User::recording.SampleValues(n, static_cast<std::int64_t>(c));
      line << QPointF(frame.left() + frame.width() * n / (Recording::max_samples - 1),
                      frame.bottom() - (value - User::AxisLow[c]) * scale);
    }
    painter.setPen(QPen(QColor(paper_colours[c]), 0));
    painter.drawPolyline(line);
  }
}

// Draws the texts of a full page, without rules and without regard to their width.
void draw_texts(QPainter& painter, int first, int rows) {
  QFont font(QStringLiteral("Liberation Sans"));
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setPixelSize(180);
  painter.setFont(font);
  for (int row = 0; row < rows; ++row) {
    const int sample = first + row;
    const auto cell = [&](int column, const QString& text) {
      painter.drawText(QRectF(column * 1700, row * 283, 1700, 283),
                       Qt::AlignRight | Qt::AlignVCenter, text);
    };
    cell(0, QString::number(sample + 1));
    cell(1, User::recording.SampleTimes(sample));
    for (int c = 0; c < channels; ++c) cell(2 + c, fixed2(User::recording.SampleValues(sample, c)));
  }
}

void show(QWidget& window) {
  window.resize(900, 1300);
  window.show();
  (void)QTest::qWaitForWindowExposed(&window);
}

double repaint_ms(PageArea& area) {
  area.redraw();
  return milliseconds([&] { area.Pic->repaint(); });
}

Side on_screen(PageArea::DrawPage draw) {
  return [draw = std::move(draw)] {
    PageArea area(draw, nullptr);
    area.set_page_size(a4_portrait);
    show(area);
    return std::optional(repaint_ms(area));
  };
}

Side timed(const std::function<void()>& work) {
  return [work] { return std::optional(milliseconds(work)); };
}

// The preview shows its whole page and repaints it as on a tick of its timer.
void graph_preview(Suite& suite) {
  SimulatedWindow world;
  frmGraphView preview(*world.main.window);
  show(preview);
  const Side repaint = [&] { return std::optional(repaint_ms(*preview.area)); };
  suite.compare("print: graph preview", repaint, "all segments drawn, curves only",
                on_screen(draw_every_sample), 0.75);
}

void graph_into_pdf(Suite& suite) {
  SimulatedWindow world;
  PdfFile pdf(world.main.folder.filePath(QStringLiteral("page.pdf")), Orientation::portrait);
  const Side ours = timed([&] { print_graph(pdf, printed_view(*world.main.window)); });
  const Side peer = timed([&] {
    draw_every_sample(pdf.start_document(QStringLiteral("bench")), pdf.paper_size());
    pdf.end_document();
  });
  suite.compare("print: graph into PDF", ours, "all segments drawn, curves only", peer, 0.25);
}

// Jumps through the sheet, so that every part of it gets its turn.
void sheet_preview(Suite& suite) {
  SimulatedWindow world;
  Shell& shell = *world.main.window;
  frmDataView preview(shell);
  show(preview);
  preview.show_page(Recording::max_samples);
  const int pages = preview.page() + 1;
  const int rows = SheetPages(printed_view(shell), a4_portrait).rows(1).count;
  int page = 0;
  const Side turn = [&] {
    page = (page + 97) % pages;
    return std::optional(milliseconds([&] {
      preview.show_page(page);
      preview.area->Pic->repaint();
    }));
  };
  const Side texts = on_screen(
      [&](QPainter& painter, QSizeF) { draw_texts(painter, Recording::max_samples / 2, rows); });
  suite.compare("print: sheet preview", turn, "a page of drawText", texts, 2.5);
}

}  // namespace

void print_benchmarks(Suite& suite) {
  fill_with_noise();
  graph_preview(suite);
  graph_into_pdf(suite);
  sheet_preview(suite);
}
