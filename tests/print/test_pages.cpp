#include <QBitmap>
#include <QPainter>
#include <QTest>

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
constexpr int full = 120;
const std::vector<int> all = {0, 1, 2, 3};

PrintedView view_of(const Recording& recording, const std::vector<int>& chosen, bool combined) {
  PrintedView result{recording, 0, {}, {30, 40, 50, 60}, {10, 20, 30, 40}, combined};
  for (const int slot : chosen) result.chosen[static_cast<std::size_t>(slot)] = true;
  return result;
}

// The graph page at 96 pixels an inch; places are millimetres of A4 in portrait.
struct Picture {
  explicit Picture(const PrintedView& view, QSizeF paper = a4_portrait)
      : image((paper / 15).toSize(), QImage::Format_RGB32), size(paper / 15) {
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(1 / 15.0, 1 / 15.0);
    draw_graph_page(painter, paper, view);
  }
  // Pixels of this channel's hue in the part, and of this saturation at least.
  int count(int slot, QRectF mm, int saturation) const {
    const auto scale = QTransform::fromScale(size.width() / 210, size.height() / 297);
    const QRect part = scale.mapRect(mm).toAlignedRect();
    int found = 0;
    for (int i = 0; i < part.width() * part.height(); ++i) {
      const QColor seen =
          image.pixelColor(part.x() + i % part.width(), part.y() + i / part.width());
      const int hue = QColor(paper_colours[std::size_t(slot)]).hsvHue();
      found += seen.hsvSaturation() >= saturation && std::abs(seen.hsvHue() - hue) < 12;
    }
    return found;
  }
  // Starts of dashes of a level curve; -1 where it is not whole.
  int dashes(int slot, double from, double to, double y) const {
    QString ink = " ";
    for (double x = from; x < to; x += 0.2) {
      if (count(slot, {x, y - 0.5, 0.01, 1}, pale) == 0) return -1;
      ink += count(slot, {x, y - 0.5, 0.01, 1}, full) > 0 ? u'-' : u' ';
    }
    return int(ink.count(" -"));
  }
  QImage image;
  QSizeF size;
};

}  // namespace

class TestPages : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() { fill_recording(*recording_, 200, 4); }

  void curve_ink() {
    const auto inks = [](std::vector<float> values) {
      QStringList text;
      const CurveSamples samples = {values.data(), 1, int(values.size())};
      for (const Ink& ink : paper_curve(samples, {{100, 10}, 10, 0, 0}, 25)) {
        text << (ink.top > ink.bottom ? "" : QStringLiteral("%1-%2").arg(ink.top).arg(ink.bottom));
      }
      return text.join(u' ');
    };
    QCOMPARE(inks({5, 5}), "5-5 5-5 5-5 5-5");
    QCOMPARE(inks({0, 8}), "8-10 6-8 4-6 2-4");
    QCOMPARE(inks({1, 1, 1, 9, 1, 1, 1, 1, 1}), "9-9 1-9 9-9 9-9");
    QCOMPARE(inks({4, 4, none, 6, 6}), "6-6 6-6  4-4");
    QCOMPARE(inks({20, 20}), "-10--10 -10--10 -10--10 -10--10");
  }

  // Each channel lies at a height of its own in the first half and at another in the second.
  void graphs() {
    for (int n = 0; n < 800; ++n) {
      const float share = float(n % 4 + 1) / 10;
      recording_->SampleValues(n / 4, n % 4) =
          10.0F * float(n % 4 + 1) + 20 * (n < 400 ? share : 1 - share);
    }
    using Row = std::tuple<std::vector<int>, bool, bool, double, double>;
    for (const auto& [chosen, combined, landscape, height, left] :
         {Row{all, true, false, 75, 68}, Row{{2}, true, false, 75, 32},
          Row{{1, 3}, false, false, 75, 32}, Row{{0, 1, 3}, false, false, 55.083, 32},
          Row{all, false, false, 34.75, 32}, Row{all, true, true, 75, 68},
          Row{{0, 2}, false, true, 75, 32}}) {
      const QSizeF paper = landscape ? a4_portrait.transposed() : a4_portrait;
      const Picture page(view_of(*recording_, chosen, combined), paper);
      double free_from = header_line_mm(6 + int(chosen.size()));
      for (const GraphPlace& place : graph_places(chosen, combined, 5 + int(chosen.size()))) {
        QVERIFY(place.top >= free_from && std::abs(place.frame_height - height) < 0.01);
        QCOMPARE(place.frame_left, left);
        const double middle = (left + 190) / 2;
        for (const int slot : place.slots_shown) {
          constexpr std::array dashes_a_width = {0.0, 1 / 13.0, 1 / 6.0, 2 / 21.0};
          const double high = place.frame_top + place.frame_height * (slot + 1) / 10;
          const double low = 2 * place.frame_top + place.frame_height - high;
          const double widths = (middle - left - 2) * page.size.width() / 210 * 15 / 17;
          const int dashes = page.dashes(slot, left + 1, middle - 1, low);
          QVERIFY(std::abs(dashes - std::max(1.0, widths * dashes_a_width[std::size_t(slot)])) <=
                  2);
          QVERIFY(page.dashes(slot, middle + 1, 189, high) > 0);
          QCOMPARE(page.count(slot, {left + 1, high - 1, middle - left - 2, 2}, pale), 0);
          QCOMPARE(page.count(slot, {191, high - 1, 15, 2}, pale), 0);
        }
        free_from = place.frame_top + place.frame_height + 9;
      }
      QVERIFY(free_from < 290);
      for (const int slot : all) {
        const bool shown = std::count(chosen.begin(), chosen.end(), slot) > 0;
        QVERIFY(shown || page.count(slot, {0, 0, 209, 296}, full) == 0);
      }
    }
  }

  // One sample, no scale, no numbers, far outside: no curve, and nothing below the frame.
  void odd_views() {
    using Row = std::tuple<int, float, float>;
    for (const auto& [shown, value, low] :
         {Row{1, 20, 10}, {200, 20, 30}, {200, none, 10}, {200, 3e38F, 10}}) {
      recording_->ViewCount = shown;
      for (int n = 0; n < 200; ++n) recording_->SampleValues(n, 0) = value;
      PrintedView odd = view_of(*recording_, {0}, true);
      odd.low[0] = low;
      QCOMPARE(Picture(odd).count(0, {33, 57, 156, 130}, pale), 0);
    }
  }

  void a_sample_outside_ends_the_drawing() {
    PrintedView beyond = view_of(*recording_, all, true);
    beyond.start = Recording::max_samples - 1;
    const QImage ink = Picture(beyond).image.createMaskFromColor(0xffffffff);
    const double end = QRegion(QBitmap::fromImage(ink)).boundingRect().bottom() * 297 / 1123.0;
    QVERIFY(end > header_line_mm(4) && end < header_line_mm(5));
  }

  void sheet_pages_hold_each_sample_once() {
    for (const auto& [start, shown] : {std::pair(0, 0), {100, 128}, {29950, 128}, {0, 30001}}) {
      recording_->SampleCount = Recording::max_samples;
      recording_->ViewCount = shown;
      PrintedView sheet = view_of(*recording_, all, true);
      sheet.start = start;
      const SheetPages pages(sheet, a4_portrait.transposed());
      int next = 0;
      for (int page = 0; page < pages.count(); ++page) {
        QVERIFY(pages.rows(page).first == next && (pages.rows(page).count > 0 || shown == 0));
        next += pages.rows(page).count;
      }
      QCOMPARE(next, std::min(shown, Recording::max_samples - start));
    }
  }

 private:
  std::unique_ptr<Recording> recording_ = std::make_unique<Recording>();
};

const int registered = register_test<TestPages>();

#include "test_pages.moc"
