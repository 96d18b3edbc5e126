#include <QBitmap>

#include <limits>

#include "print/graph_page.h"
#include "print/page.h"
#include "print/paper_curve.h"
#include "print/print_world.h"
#include "print/sheet_page.h"

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();
const std::vector<int> all = {0, 1, 2, 3};

PrintedView view_of(const std::vector<int>& chosen, bool combined, int start = 0) {
  PrintedView view{User::recording, start, {}, {30, 40, 50, 60}, {10, 20, 30, 40}, combined};
  for (const int slot : chosen) view.chosen[static_cast<std::size_t>(slot)] = true;
  return view;
}

QImage picture_of(const PrintedView& view, QSizeF paper = a4_portrait) {
  PageArea area([&](QPainter& painter, QSizeF size) { draw_graph_page(painter, size, view); }, {});
  area.set_page_size(paper);
  return area.picture();
}

// What is drawn of a level curve, places in millimetres of A4 in portrait: "-" its colour, "."
// pale.
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

}  // namespace

class TestPages : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void init() { PrintWorld(200); }

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
    QCOMPARE(inks({8, 0}), "2-4 4-6 6-8 8-10");
    QCOMPARE(inks({1, 1, 1, 9, 1, 1, 1, 1, 1}), "9-9 1-9 9-9 9-9");
    QCOMPARE(inks({4, 4, none, none, 6}), "6-6 6-6  ");
  }

  // Each channel lies at a height of its own in the first half and at another in the second.
  void graphs() {
    for (int n = 0; n < 800; ++n) {
      const float share = float(n % 4 + 1) / 10;
      User::recording.SampleValues(n / 4, n % 4) =
          10.0F * float(n % 4 + 1) + 20 * (n < 400 ? share : 1 - share);
    }
    using Row = std::tuple<std::vector<int>, bool, bool, double, double>;
    for (const auto& [chosen, combined, landscape, height, left] :
         {Row{all, true, false, 75, 68},
          {{2}, true, false, 75, 32},
          {{1, 3}, false, false, 75, 32},
          {{0, 1, 3}, false, false, 55.083, 32},
          {all, false, false, 34.75, 32},
          {all, true, true, 75, 68},
          {{0, 2}, false, true, 75, 32}}) {
      const QSizeF paper = landscape ? a4_portrait.transposed() : a4_portrait;
      const QImage page = picture_of(view_of(chosen, combined), paper);
      double free_from = header_line_mm(6 + int(chosen.size()));
      for (const GraphPlace& place : graph_places(chosen, combined, 5 + int(chosen.size()))) {
        QVERIFY(place.top >= free_from && std::abs(place.frame_height - height) < 0.01);
        QCOMPARE(place.frame_left, left);
        const double middle = (left + 190) / 2;
        for (const int slot : place.slots_shown) {
          constexpr std::array dashes_a_width = {0.0, 1 / 13.0, 1 / 6.0, 2 / 21.0};
          const double high = place.frame_top + place.frame_height * (slot + 1) / 10;
          const double low = 2 * place.frame_top + place.frame_height - high;
          const double expected =
              (middle - left - 2) * paper.width() / 210 / 17 * dashes_a_width[std::size_t(slot)];
          const QString ink = ink_along(page, slot, left + 1, middle - 1, low);
          const int dashes = ink.startsWith(u'-') + int(ink.count(".-"));
          QVERIFY(std::abs(dashes - std::max(1.0, expected)) <= 2);
          QVERIFY(slot == 2 || ink.count(u'-') > ink.count(u'.'));
          QVERIFY(!(ink + ink_along(page, slot, middle + 1, 189, high)).contains(u' '));
          QVERIFY(ink_along(page, slot, left + 1, middle - 1, high).trimmed().isEmpty());
        }
        free_from = place.frame_top + place.frame_height + 9;
      }
      QVERIFY(free_from < 290);
    }
  }

  // One sample, no scale, outside, and a channel not chosen: no curve.
  void odd_views() {
    using Row = std::tuple<int, int, float, float>;
    for (const auto& [slot, shown, value, low] : {Row{0, 1, 20, 10},
                                                  {0, 200, 20, 30},
                                                  {0, 200, 3e38F, 10},
                                                  {0, 200, 30.05F, 10},
                                                  {1, 200, 30, 10}}) {
      User::recording.ViewCount = shown;
      PrintedView odd = view_of({0}, true);
      odd.low[0] = low;
      QList<QImage> pages;
      for (const float drawn : {value, none}) {
        for (int n = 0; n < 200; ++n) User::recording.SampleValues(n, slot) = drawn;
        pages << picture_of(odd);
      }
      QCOMPARE(pages[0], pages[1]);
    }
  }

  void a_sample_outside_ends_the_drawing() {
    const QImage page = picture_of(view_of(all, true, Recording::max_samples - 1));
    const QRegion ink(QBitmap::fromImage(page.createMaskFromColor(0xffffffff)));
    const double end = ink.boundingRect().bottom() * 297 / 1123.0;
    QVERIFY(end > header_line_mm(4) && end < header_line_mm(5));
  }

  void sheet_pages_hold_each_sample_once() {
    User::recording.SampleCount = Recording::max_samples;
    for (const auto& [start, shown] : {std::pair(0, 0), {100, 128}, {29950, 128}, {0, 30001}}) {
      User::recording.ViewCount = shown;
      const SheetPages pages(view_of(all, true, start), a4_portrait.transposed());
      int next = 0;
      for (int page = 0; page < pages.count(); ++page) {
        QVERIFY(pages.rows(page).first == next && (pages.rows(page).count > 0 || shown == 0));
        next += pages.rows(page).count;
      }
      QCOMPARE(next, std::min(shown, Recording::max_samples - start));
    }
  }
};

const int registered = register_test<TestPages>();

#include "test_pages.moc"
