#include <QPainter>
#include <QTest>

#include <algorithm>
#include <limits>

#include "print/graph_page.h"
#include "print/page.h"
#include "print/paper_curve.h"
#include "print/sample_recording.h"
#include "print/sheet_page.h"
#include "support/runner.h"

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();
constexpr int pale = 20;
constexpr int full = 100;
const QSizeF a4_landscape = a4_portrait.transposed();

struct CurveRow {
  const char* name;
  std::vector<float> values;
  std::vector<Ink> inks;
};

struct PageRow {
  const char* name;
  std::vector<int> chosen;
  bool combined;
  QSizeF paper;
  double height;
  double left;
};

// The graph page at 96 pixels an inch; places are millimetres of A4 in portrait.
struct Picture {
  explicit Picture(const PrintedView& view, QSizeF paper = a4_portrait)
      : image((paper / 15).toSize(), QImage::Format_RGB32),
        mm(QTransform::fromScale(paper.width() / 15 / 210, paper.height() / 15 / 297)) {
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(1 / 15.0, 1 / 15.0);
    draw_graph_page(painter, paper, view);
  }
  // Pixels of this channel's hue in the part, and of this saturation at least.
  int count(std::size_t slot, QRectF part, int saturation) const {
    const QRectF pixels = mm.mapRect(part);
    const int hue = QColor(paper_colours[slot]).hsvHue();
    int found = 0;
    for (int y = int(pixels.top()); y <= int(pixels.bottom()); ++y) {
      for (int x = int(pixels.left()); x <= int(pixels.right()); ++x) {
        const QColor seen = image.pixelColor(x, y);
        found += seen.hsvSaturation() >= saturation && std::abs(seen.hsvHue() - hue) < 12;
      }
    }
    return found;
  }
  bool is_white(double from_mm, double to_mm) const {
    const QImage part = image.copy(mm.mapRect(QRectF(0, from_mm, 210, to_mm - from_mm)).toRect());
    QImage white(part.size(), part.format());
    white.fill(Qt::white);
    return part == white;
  }
  QImage image;
  QTransform mm;
};

// A level curve lies there and is whole, with this channel's number of dashes.
void check_level(const Picture& page, std::size_t slot, double from, double to, double y) {
  constexpr std::array dashes_a_width = {0.0, 1 / 13.0, 1 / 6.0, 2 / 21.0};
  constexpr double curve_width = 17;
  int dashes = 0;
  bool inside = false;
  for (double x = from; x < to; x += 0.2) {
    QVERIFY(page.count(slot, {x, y - 0.5, 0, 1}, pale) > 0);
    const bool ink = page.count(slot, {x, y - 0.5, 0, 1}, full) > 0;
    dashes += ink && !inside;
    inside = ink;
  }
  const double widths = (to - from) * page.mm.m11() * 15 / curve_width;
  QVERIFY(std::abs(dashes - std::max(1.0, widths * dashes_a_width[slot])) <= 2);
}

}  // namespace

class TestPages : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() { fill_recording(*recording_, 200, 4); }

  void curve_ink_data() {
    add_rows<CurveRow>({
        {"level", {5, 5}, {{5, 5}, {5, 5}, {5, 5}, {5, 5}}},
        {"slope", {0, 8}, {{8, 10}, {6, 8}, {4, 6}, {2, 4}}},
        {"peak among many", {1, 1, 1, 9, 1, 1, 1, 1, 1}, {{9, 9}, {1, 9}, {9, 9}, {9, 9}}},
        {"gap", {4, 4, none, 6, 6}, {{6, 6}, {6, 6}, {}, {4, 4}}},
        {"outside", {20, 20}, {{-10, -10}, {-10, -10}, {-10, -10}, {-10, -10}}},
    });
  }
  void curve_ink() {
    QFETCH(CurveRow, row);
    const CurveSamples samples = {row.values.data(), 1, static_cast<int>(row.values.size())};
    const auto inks = paper_curve(samples, {{100, 10}, 10, 0, 0}, 25);
    QVERIFY(std::equal(inks.begin(), inks.end(), row.inks.begin(), row.inks.end(),
                       [](Ink a, Ink b) { return a.top == b.top && a.bottom == b.bottom; }));
  }

  void graphs_data() {
    const std::vector<int> all = {0, 1, 2, 3};
    add_rows<PageRow>({{"combined", all, true, a4_portrait, 75, 68},
                       {"combined, one", {2}, true, a4_portrait, 75, 32},
                       {"separate, two", {1, 3}, false, a4_portrait, 75, 32},
                       {"separate, three", {0, 1, 3}, false, a4_portrait, 55.083, 32},
                       {"separate", all, false, a4_portrait, 34.75, 32},
                       {"landscape", all, true, a4_landscape, 75, 68},
                       {"landscape, separate", {0, 2}, false, a4_landscape, 75, 32}});
  }
  // Each channel lies at a height of its own in the first half and at another in the second.
  void graphs() {
    QFETCH(PageRow, row);
    const auto share = [](int slot) { return (slot + 1) / 10.0; };
    for (int n = 0; n < 200; ++n) {
      for (int c = 0; c < 4; ++c) {
        const double height = n < 100 ? share(c) : 1 - share(c);
        recording_->SampleValues(n, c) = static_cast<float>(10 * c + 10 + 20 * height);
      }
    }
    const Picture page(view(row.chosen, row.combined), row.paper);
    const auto lines = static_cast<int>(5 + row.chosen.size());
    double free_from = header_line_mm(lines + 1);
    for (const GraphPlace& place : graph_places(row.chosen, row.combined, lines)) {
      QVERIFY(place.top >= free_from);
      QVERIFY(std::abs(place.frame_height - row.height) < 0.01);
      QCOMPARE(place.frame_left, row.left);
      const double middle = (place.frame_left + 190) / 2;
      for (const int slot : place.slots_shown) {
        const auto c = static_cast<std::size_t>(slot);
        const double high = place.frame_top + place.frame_height * share(slot);
        const double low = place.frame_top + place.frame_height * (1 - share(slot));
        check_level(page, c, row.left + 1, middle - 1, low);
        check_level(page, c, middle + 1, 189, high);
        QCOMPARE(page.count(c, {row.left + 1, high - 1, middle - row.left - 2, 2}, pale), 0);
        QCOMPARE(page.count(c, {191, high - 1, 15, 2}, pale), 0);
      }
      free_from = place.frame_top + place.frame_height + 9;
    }
    QVERIFY(free_from < 290);
    for (int slot = 0; slot < 4; ++slot) {
      const bool chosen = std::count(row.chosen.begin(), row.chosen.end(), slot) > 0;
      QCOMPARE(page.count(std::size_t(slot), {0, 0, 209, 296}, full) > 0, chosen);
    }
  }

  // One sample, no scale, no numbers, far outside: nothing outside the frame, and it ends.
  void odd_views() {
    struct Odd {
      int count;
      float value;
      float low;
    };
    for (const Odd& odd : {Odd{1, 20, 10}, {200, 20, 30}, {200, none, 10}, {200, 3e38F, 10}}) {
      recording_->ViewCount = odd.count;
      for (int n = 0; n < 200; ++n) recording_->SampleValues(n, 0) = n % 2 ? -odd.value : odd.value;
      PrintedView shown = view({0});
      shown.low[0] = odd.low;
      const Picture page(shown);
      const double top = graph_places({0}, true, 6).front().frame_top;
      QCOMPARE(page.count(0, {10, top + 76, 190, 50}, pale), 0);
      QCOMPARE(page.count(0, {33, top, 156, 75}, full) > 0, odd.value > 1e38F);
    }
  }

  void a_sample_outside_ends_the_drawing() {
    PrintedView beyond = view({0, 1});
    beyond.start = 30'000;
    recording_->ViewCount = 2;
    const Picture page(beyond);
    QVERIFY(!page.is_white(header_line_mm(4), header_line_mm(5)));
    QVERIFY(page.is_white(header_line_mm(5), 297));
  }

  void sheet_pages_hold_each_sample_once() {
    struct Sheet {
      int samples;
      int start;
      int shown;
    };
    for (const Sheet& held :
         {Sheet{0, 0, 0}, {500, 100, 128}, {500, 450, 128}, {30001, 0, 30001}}) {
      recording_->SampleCount = held.samples;
      recording_->ViewCount = held.shown;
      PrintedView sheet = view({0, 1});
      sheet.start = held.start;
      const SheetPages pages(sheet, a4_landscape);
      int next = 0;
      for (int page = 0; page < pages.count(); ++page) {
        QCOMPARE(pages.rows(page).first, next);
        QVERIFY(pages.rows(page).count > 0 || held.shown == 0);
        next += pages.rows(page).count;
      }
      QCOMPARE(next, std::min(held.shown, held.samples - held.start));
    }
  }

 private:
  PrintedView view(const std::vector<int>& chosen, bool combined = true) const {
    PrintedView result{*recording_, 0, {}, {30, 40, 50, 60}, {10, 20, 30, 40}, combined};
    for (const int slot : chosen) result.chosen[static_cast<std::size_t>(slot)] = true;
    return result;
  }

  std::unique_ptr<Recording> recording_ = std::make_unique<Recording>();
};

const int registered = register_test<TestPages>();

#include "test_pages.moc"
