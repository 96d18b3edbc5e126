#include <QPainter>
#include <QTest>

#include "monitor/live_buffer.h"
#include "monitor/live_graph.h"
#include "monitor/live_view.h"
#include "support/runner.h"

class TestLiveView : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void place_data();
  void place();
  void zoom();
  void nearest_data();
  void nearest();
  void cursor_labels();
  void grid_and_scale();
  void channels_lie_side_by_side();
};

namespace {

constexpr int width = 321;
constexpr int height = 161;
const LiveGraphColours colours = {Qt::white, QColor(200, 200, 200)};

QImage drawn(const LiveBuffer& buffer, const LiveView& view, int channels, double dpi = 96) {
  QImage image(width, height, QImage::Format_RGB32);
  draw_live_graph(image, dpi, buffer, view, channels, colours);
  return image;
}

LiveBuffer filled(int count, const LiveReading& reading) {
  LiveBuffer buffer;
  for (int n = 0; n < count; ++n) buffer.push({}, reading);
  return buffer;
}

}  // namespace

void TestLiveView::place_data() {
  QTest::addColumn<int>("slider");
  QTest::addColumn<int>("count");
  QTest::addColumn<int>("span");
  QTest::addColumn<int>("first");
  QTest::addColumn<int>("last_reading");  // -1: none
  QTest::newRow("empty") << 100 << 0 << 128 << 0 << -1;
  QTest::newRow("fewer than the span") << 100 << 127 << 128 << 0 << 126;
  QTest::newRow("exactly the span") << 50 << 128 << 128 << 0 << 127;
  QTest::newRow("end follows the newest") << 100 << 129 << 128 << 1 << 128;
  QTest::newRow("start") << 0 << 15000 << 128 << 0 << 127;
  QTest::newRow("middle") << 50 << 15000 << 128 << 7500 << 7627;
  QTest::newRow("near the end sticks to it") << 99 << 5000 << 128 << 4872 << 4999;
  QTest::newRow("ties to even, down") << 1 << 250 << 5 << 2 << 6;
  QTest::newRow("ties to even, up") << 1 << 350 << 5 << 4 << 8;
  QTest::newRow("full, at the end") << 100 << 15000 << 15000 << 0 << 14999;
  QTest::newRow("wider than the buffer") << 100 << 15000 << 16384 << 0 << 14999;
}

void TestLiveView::place() {
  QFETCH(int, slider);
  QFETCH(int, count);
  QFETCH(int, span);
  QFETCH(int, first);
  LiveView view;
  view.Span = span;
  view.place(slider, count);
  QCOMPARE(int{view.FirstShown}, first);
  QCOMPARE(int{view.LastShown}, first + span - 1);
  QTEST(view.last_reading(count).value_or(-1), "last_reading");
}

void TestLiveView::zoom() {
  LiveView view;
  QList<int> spans;
  for (int step = 0; step < 5; ++step) {
    view.zoom(1);
    spans << view.Span;
  }
  QCOMPARE(spans, QList<int>({102, 82, 66, 53, 42}));
  for (int step = 0; step < 40; ++step) view.zoom(1);
  QCOMPARE(view.Span, 5);
  view.zoom(0);
  QCOMPARE(view.Span, 6);  // 6.25
  for (int step = 0; step < 60; ++step) view.zoom(0);
  QCOMPARE(view.Span, 16384);
  view.zoom(1);
  QCOMPARE(view.Span, 13107);
}

void TestLiveView::nearest_data() {
  QTest::addColumn<double>("x");
  QTest::addColumn<int>("count");
  QTest::addColumn<int>("reading");  // -1: none
  QTest::newRow("left edge") << 0.0 << 200 << 0;
  QTest::newRow("right edge") << 1270.0 << 200 << 127;
  QTest::newRow("on a reading") << 640.0 << 200 << 64;
  QTest::newRow("half-way, to even") << 645.0 << 200 << 64;
  QTest::newRow("half-way, to even, up") << 635.0 << 200 << 64;
  QTest::newRow("beyond the last reading there is") << 1000.0 << 20 << 19;
  QTest::newRow("no reading") << 10.0 << 0 << -1;
}

void TestLiveView::nearest() {
  QFETCH(double, x);
  QFETCH(int, count);
  LiveView view;
  view.place(100, count);
  const auto reading = view.nearest(x, 1270, count);
  QTEST(reading.value_or(-1), "reading");
  if (reading) QCOMPARE(view.place_of(*reading, 1270), *reading * 10.0);
}

void TestLiveView::cursor_labels() {
  QCOMPARE(cursor_label_left(100, 1000, 5000), 130.0);
  QCOMPARE(cursor_label_left(3970, 1000, 5000), 4000.0);
  QCOMPARE(cursor_label_left(3971, 1000, 5000), 3971 - 1417.5);
}

// 16 x 16 cells whose outer lines lie on the picture's edges; -40 at the bottom, 120 at the top.
void TestLiveView::grid_and_scale() {
  LiveView view;
  const QImage grid = drawn({}, view, 4);
  int lines = 0;
  for (int x = 0; x < width; ++x) lines += grid.pixelColor(x, 5) == colours.grid;
  QCOMPARE(lines, 17);
  QVERIFY(grid.pixelColor(0, 5) == colours.grid && grid.pixelColor(width - 1, 5) == colours.grid);
  lines = 0;
  for (int y = 0; y < height; ++y) lines += grid.pixelColor(5, y) == colours.grid;
  QCOMPARE(lines, 17);

  view.Span = 5;
  for (const auto& [value, y] : {std::pair(120.0F, 0), {40.0F, 80}, {-40.0F, 160}}) {
    const QImage image = drawn(filled(5, {value}), view, 1);
    for (int x = 1; x < width - 1; ++x) QCOMPARE(image.pixelColor(x, y), live_curve_colours[0]);
  }
  // Two of the span's five readings: a quarter of the width.
  const QImage part = drawn(filled(2, {35.0F}), view, 1);
  for (int x = 0; x < width; ++x) {
    QCOMPARE(part.pixelColor(x, 85) == live_curve_colours[0], x <= (width - 1) / 4);
  }
}

// Three twips at 4800 dots an inch are ten dots.
void TestLiveView::channels_lie_side_by_side() {
  LiveView view;
  view.Span = 5;
  const QImage image = drawn(filled(5, {40, 40, 40, 40}), view, 3, 4800);
  for (int c = 0; c < 3; ++c) {
    QCOMPARE(image.pixelColor(100, 80 + 10 * c), live_curve_colours[static_cast<std::size_t>(c)]);
  }
  QVERIFY(image.pixelColor(105, 110) == colours.grid || image.pixelColor(105, 110) == Qt::white);
}

namespace {
const int registered = register_test<TestLiveView>();
}

#include "test_live_view.moc"
