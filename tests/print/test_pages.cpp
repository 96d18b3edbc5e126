#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>

#include "print/graph_page.h"
#include "print/page.h"
#include "print/paper_curve.h"
#include "print/sample_recording.h"
#include "print/sheet_page.h"
#include "support/runner.h"

namespace {

constexpr double twips_per_pixel = 15;
constexpr float none = std::numeric_limits<float>::quiet_NaN();

template <class Draw>
QImage picture_of(QSizeF size, Draw draw) {
  QImage image((size / twips_per_pixel).toSize(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(1 / twips_per_pixel, 1 / twips_per_pixel);
  draw(painter);
  return image;
}

// A pixel of this hue, be it the edge of a line that fades into white.
bool has_colour(QRgb pixel, QRgb colour) {
  const QColor seen(pixel);
  return seen.hsvSaturation() > 60 && std::abs(seen.hsvHue() - QColor(colour).hsvHue()) < 12;
}

int count_of(const QImage& image, QRgb colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += has_colour(image.pixel(x, y), colour);
  }
  return count;
}

bool is_white(const QImage& image, QRect part) {
  const QImage cut = image.copy(part);
  QImage white(cut.size(), cut.format());
  white.fill(Qt::white);
  return cut == white;
}

int pixels_down(double mm) {
  return static_cast<int>(mm * twips_per_mm / twips_per_pixel);
}

}  // namespace

class TestPages : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init();
  void curve_pieces_data();
  void curve_pieces();
  void a_crowded_column_keeps_its_ink();
  void places_data();
  void places();
  void curves_have_their_colours_data();
  void curves_have_their_colours();
  void a_curve_lies_where_its_values_are();
  void dashes_differ();
  void landscape_stretches_the_page();
  void a_sample_outside_ends_the_drawing();
  void odd_views_data();
  void odd_views();
  void sheet_pages_hold_each_sample_once_data();
  void sheet_pages_hold_each_sample_once();
  void sheet_rows_are_drawn();

 private:
  PrintedView view(std::vector<int> slots_chosen, bool combined = true) const;
  QImage graph_page(const PrintedView& view, QSizeF size = a4_portrait) const;

  std::unique_ptr<Recording> recording_;
};

void TestPages::init() {
  recording_ = std::make_unique<Recording>();
  fill_recording(*recording_, 200, 4);
}

PrintedView TestPages::view(std::vector<int> slots_chosen, bool combined) const {
  PrintedView result{*recording_};
  result.combined = combined;
  result.high = {30, 40, 50, 60};
  result.low = {10, 20, 30, 40};
  for (const int slot : slots_chosen) result.chosen[static_cast<std::size_t>(slot)] = true;
  return result;
}

QImage TestPages::graph_page(const PrintedView& view, QSizeF size) const {
  return picture_of(size, [&](QPainter& painter) { draw_graph_page(painter, size, view); });
}

void TestPages::curve_pieces_data() {
  QTest::addColumn<QList<float>>("values");
  QTest::addColumn<QList<QPolygonF>>("pieces");
  using Values = QList<float>;
  using Pieces = QList<QPolygonF>;
  using Piece = QPolygonF;
  QTest::newRow("inside") << Values{0, 10, 5} << Pieces{Piece{{0, 10}, {50, 0}, {100, 5}}};
  QTest::newRow("cut above and below")
      << Values{5, 15, -5} << Pieces{Piece{{0, 5}, {25, 0}}, Piece{{62.5, 0}, {87.5, 10}}};
  QTest::newRow("back in") << Values{20, 0, 20} << Pieces{Piece{{25, 0}, {50, 10}, {75, 0}}};
  QTest::newRow("all above") << Values{20, 30, 20} << Pieces{};
  QTest::newRow("level above") << Values{20, 20, 20} << Pieces{};
  QTest::newRow("a gap") << Values{1, 2, none, 4, 5}
                         << Pieces{Piece{{0, 9}, {25, 8}}, Piece{{75, 6}, {100, 5}}};
  QTest::newRow("huge") << Values{-3e38F, 3e38F} << Pieces{Piece{{50, 10}, {50, 0}}};
}

void TestPages::curve_pieces() {
  QFETCH(QList<float>, values);
  QFETCH(QList<QPolygonF>, pieces);
  const int count = static_cast<int>(values.size());
  const CurvePlace place = {count, {100, 10}, 10, 0, 0};
  const auto got = paper_curve({values.constData(), 1, count}, place, 0.01);
  QCOMPARE(QList<QPolygonF>(got.begin(), got.end()), pieces);
}

// A spike of one sample among thousands a column must be on paper.
void TestPages::a_crowded_column_keeps_its_ink() {
  std::vector<float> values(30001, 5);
  values[12'345] = 9;
  values[12'346] = 1;
  const int count = static_cast<int>(values.size());
  const auto pieces = paper_curve({values.data(), 1, count}, {count, {100, 10}, 10, 0, 0}, 1);
  QCOMPARE(pieces.size(), std::size_t{1});
  const QRectF bounds = pieces[0].boundingRect();
  QCOMPARE(bounds, QRectF(0, 1, 100, 8));
  QVERIFY(pieces[0].size() <= 4 * 101);
}

void TestPages::places_data() {
  QTest::addColumn<int>("channels");
  QTest::addColumn<bool>("combined");
  QTest::addColumn<double>("height");
  QTest::addColumn<double>("left");
  QTest::newRow("one") << 1 << true << 75.0 << 32.0;
  QTest::newRow("four in one") << 4 << true << 75.0 << 68.0;
  QTest::newRow("one by itself") << 1 << false << 75.0 << 32.0;
  QTest::newRow("two") << 2 << false << 75.0 << 32.0;
  QTest::newRow("three share") << 3 << false << 55.0833 << 32.0;
  QTest::newRow("four share") << 4 << false << 34.75 << 32.0;
}

void TestPages::places() {
  QFETCH(int, channels);
  QFETCH(bool, combined);
  QFETCH(double, height);
  QFETCH(double, left);
  std::vector<int> slots_to_print;
  for (int c = 0; c < channels; ++c) slots_to_print.push_back(c);
  const auto places = graph_places(slots_to_print, combined, 5 + channels);
  QCOMPARE(int(places.size()), combined ? 1 : channels);
  double free_from = header_line_mm(5 + channels + 1);
  for (const GraphPlace& place : places) {
    QVERIFY2(place.top >= free_from, qPrintable(QString::number(place.top)));
    QVERIFY(std::abs(place.frame_height - height) < 0.01);
    QCOMPARE(place.frame_left, left);
    free_from = place.frame_top + place.frame_height + 9;
  }
  QVERIFY(free_from < 290);
}

void TestPages::curves_have_their_colours_data() {
  QTest::addColumn<QList<int>>("chosen");
  QTest::addColumn<bool>("combined");
  for (const bool combined : {true, false}) {
    const char* how = combined ? "combined" : "separate";
    QTest::addRow("%s, all", how) << QList<int>{0, 1, 2, 3} << combined;
    QTest::addRow("%s, two", how) << QList<int>{1, 3} << combined;
    QTest::addRow("%s, one", how) << QList<int>{2} << combined;
  }
}

void TestPages::curves_have_their_colours() {
  QFETCH(QList<int>, chosen);
  QFETCH(bool, combined);
  const QImage page = graph_page(view({chosen.begin(), chosen.end()}, combined));
  for (int slot = 0; slot < 4; ++slot) {
    const int count = count_of(page, paper_colours[static_cast<std::size_t>(slot)]);
    QVERIFY2(chosen.contains(slot) ? count > 150 : count == 0,
             qPrintable(QStringLiteral("slot %1: %2").arg(slot).arg(count)));
  }
}

void TestPages::a_curve_lies_where_its_values_are() {
  for (int n = 0; n < 200; ++n) recording_->SampleValues(n, 0) = n < 100 ? 15 : 25;
  const QImage page = graph_page(view({0}));
  const GraphPlace place = graph_places({0}, true, 6).front();
  const auto drawn = [&](double across_mm, double down_mm) {
    for (int y = pixels_down(down_mm) - 1; y <= pixels_down(down_mm) + 1; ++y) {
      if (has_colour(page.pixel(pixels_down(across_mm), y), paper_colours[0])) return true;
    }
    return false;
  };
  const double quarter = place.frame_top + place.frame_height / 4;
  QVERIFY(drawn(place.frame_left + 40, place.frame_top + place.frame_height * 3 / 4));
  QVERIFY(!drawn(place.frame_left + 40, quarter));
  QVERIFY(drawn(150, quarter));
  QVERIFY(drawn(189, quarter));
  QVERIFY(!drawn(191, quarter));
}

// A level curve of each channel falls into its own number of dashes.
void TestPages::dashes_differ() {
  std::vector<int> counts;
  for (int slot = 0; slot < 4; ++slot) {
    for (int n = 0; n < 200; ++n) recording_->SampleValues(n, slot) = 25.0F + 10.0F * float(slot);
    const QImage page = graph_page(view({slot}));
    const GraphPlace place = graph_places({slot}, true, 6).front();
    const int y = pixels_down(place.frame_top + place.frame_height / 4) - 2;
    int dashes = 0;
    bool inside = false;
    for (int x = pixels_down(place.frame_left) + 2; x < page.width(); ++x) {
      const bool ink =
          count_of(page.copy(x, y, 1, 5), paper_colours[static_cast<std::size_t>(slot)]) > 0;
      dashes += ink && !inside;
      inside = ink;
    }
    counts.push_back(dashes);
  }
  QCOMPARE(counts[0], 1);
  std::sort(counts.begin(), counts.end());
  for (std::size_t i = 1; i < counts.size(); ++i) QVERIFY(counts[i] > counts[i - 1] + 5);
}

void TestPages::landscape_stretches_the_page() {
  const QSizeF size = a4_portrait.transposed();
  const QImage page = graph_page(view({0, 1, 2, 3}), size);
  QCOMPARE(page.size(), QSize(1123, 794));
  const GraphPlace place = graph_places({0, 1, 2, 3}, true, 9).front();
  const double across = 297.0 / 210.0;
  const double down = 210.0 / 297.0;
  const auto dark = [&](double x_mm, double y_mm) {
    const QRect spot(pixels_down(x_mm * across) - 1, pixels_down(y_mm * down) - 1, 3, 3);
    return !is_white(page, spot);
  };
  QVERIFY(dark(190, place.frame_top + 31));
  QVERIFY(dark(place.frame_left, place.frame_top + 31));
  QVERIFY(dark(150, place.frame_top + 75));
  QVERIFY(is_white(page, QRect(0, pixels_down((place.frame_top + 87) * down), 1123, 200)));
}

void TestPages::a_sample_outside_ends_the_drawing() {
  PrintedView beyond = view({0, 1});
  beyond.start = 30'000;
  recording_->ViewCount = 2;
  const QImage page = graph_page(beyond);
  const int line_5 = pixels_down(header_line_mm(5));
  QVERIFY(!is_white(page, QRect(0, line_5 - pixels_down(5), page.width(), pixels_down(4))));
  QVERIFY(is_white(page, QRect(0, line_5, page.width(), page.height() - line_5)));
}

void TestPages::odd_views_data() {
  QTest::addColumn<int>("count");
  QTest::addColumn<float>("value");
  QTest::addColumn<float>("low");
  QTest::newRow("one sample") << 1 << 20.0F << 10.0F;
  QTest::newRow("no scale") << 200 << 20.0F << 30.0F;
  QTest::newRow("no numbers") << 200 << none << 10.0F;
  QTest::newRow("far outside") << 200 << 3e38F << 10.0F;
}

// No curve, and nothing drawn outside the frame or for ever.
void TestPages::odd_views() {
  QFETCH(int, count);
  QFETCH(float, value);
  QFETCH(float, low);
  recording_->ViewCount = count;
  for (int n = 0; n < 200; ++n) recording_->SampleValues(n, 0) = n % 2 == 0 ? value : -value;
  if (value == 20.0F) recording_->SampleValues(1, 0) = value;
  PrintedView odd = view({0});
  odd.low[0] = low;
  const QImage page = graph_page(odd);
  const GraphPlace place = graph_places({0}, true, 6).front();
  const QImage under =
      page.copy(0, pixels_down(place.frame_top + place.frame_height) + 2, page.width(), 300);
  QCOMPARE(count_of(under, paper_colours[0]), 0);
  const QImage frame = page.copy(pixels_down(place.frame_left) + 2, pixels_down(place.frame_top),
                                 400, pixels_down(75));
  if (value != 3e38F) QCOMPARE(count_of(frame, paper_colours[0]), 0);
}

void TestPages::sheet_pages_hold_each_sample_once_data() {
  QTest::addColumn<int>("samples");
  QTest::addColumn<int>("start");
  QTest::addColumn<int>("shown");
  QTest::newRow("none") << 0 << 0 << 0;
  QTest::newRow("one") << 1 << 0 << 1;
  QTest::newRow("a segment") << 500 << 100 << 128;
  QTest::newRow("a view that runs out") << 500 << 450 << 128;
  QTest::newRow("full") << 30001 << 0 << 30001;
}

void TestPages::sheet_pages_hold_each_sample_once() {
  QFETCH(int, samples);
  QFETCH(int, start);
  QFETCH(int, shown);
  recording_->SampleCount = samples;
  recording_->ViewCount = shown;
  PrintedView sheet = view({0, 1});
  sheet.start = start;
  for (const QSizeF& size : {a4_portrait, a4_portrait.transposed()}) {
    const SheetPages pages(sheet, size);
    int next = 0;
    for (int page = 0; page < pages.count(); ++page) {
      const SheetRows rows = pages.rows(page);
      QCOMPARE(rows.first, next);
      QVERIFY(rows.count > 0 || shown == 0);
      next += rows.count;
    }
    QCOMPARE(next, std::min(shown, samples - start));
    QCOMPARE(pages.rows(pages.count()).count, 0);
  }
}

void TestPages::sheet_rows_are_drawn() {
  recording_->SampleCount = recording_->ViewCount = 60;
  const PrintedView sheet = view({0, 1, 2, 3});
  const auto page = [&](int number) {
    return picture_of(a4_portrait, [&](QPainter& painter) {
      draw_sheet_page(painter, a4_portrait, sheet, number);
    });
  };
  // The last page begins with the table's head and has no header above it.
  const QImage last = page(1);
  QVERIFY(is_white(last, QRect(0, 0, last.width(), pixels_down(14))));
  QVERIFY(!is_white(last, QRect(0, pixels_down(15), last.width(), pixels_down(6))));
  const int rows = SheetPages(sheet, a4_portrait).rows(1).count;
  const int end = pixels_down(15 + 6 + 5.0 * rows) + 2;
  QVERIFY(!is_white(last, QRect(0, end - pixels_down(5), last.width(), pixels_down(4))));
  QVERIFY(is_white(last, QRect(0, end, last.width(), pixels_down(280) - end)));
  const QImage first = page(0);
  QVERIFY(!is_white(first, QRect(0, pixels_down(15.5), first.width(), pixels_down(4))));
}

const int registered = register_test<TestPages>();

#include "test_pages.moc"
