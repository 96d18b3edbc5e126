#include <QTest>

#include "monitor/live_buffer.h"
#include "monitor/live_graph.h"
#include "monitor/live_view.h"
#include "support/runner.h"
#include "views/graph_picture.h"

class TestLiveView : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void place_data();
  void place();
  void zoom();
  void nearest_data();
  void nearest();
  void cursor_labels();
  void fixed_scale();
  void only_readings_that_exist();
  void channels_lie_side_by_side();
};

namespace {

constexpr int width = 321;
constexpr int height = 161;

QImage drawn(const LiveBuffer& buffer, const LiveView& view, int channels) {
  GraphPicture picture;
  take_live_curves(picture.new_curves(), buffer, view, channels);
  QImage image(width, height, QImage::Format_RGB32);
  picture.draw(image, picture_size(image.size(), 1), qRgb(255, 255, 255));
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

// -40 lies at the bottom, 120 at the top.
void TestLiveView::fixed_scale() {
  LiveView view;
  view.Span = 5;
  for (const auto& [value, y] : {std::pair(120.0F, 0), {40.0F, 80}, {-40.0F, 160}}) {
    const QImage image = drawn(filled(5, {value}), view, 1);
    for (int x = 0; x < width; ++x) QCOMPARE(image.pixel(x, y), curve_colours[0]);
  }
}

void TestLiveView::only_readings_that_exist() {
  for (const int span : {5, 101, 641, 6401}) {
    LiveView view;
    view.Span = span;
    const int readings = span / 4 + 1;
    const QImage image = drawn(filled(readings, {35, -20}), view, 2);
    for (int x = 0; x < width; ++x) {
      QCOMPARE(image.pixel(x, 85) == curve_colours[0], x <= (width - 1) / 4);
      QCOMPARE(image.pixel(x, 140) == curve_colours[1], x <= (width - 1) / 4);
    }
  }
  LiveView view;
  QCOMPARE(drawn({}, view, 4), drawn(filled(1, {35}), view, 1));
}

// The first three of four equal curves are under the last, which 9 twips move down by a pixel.
void TestLiveView::channels_lie_side_by_side() {
  LiveView view;
  view.Span = 5;
  const QImage image = drawn(filled(5, {35, 35, 35, 35}), view, 4);
  QCOMPARE(image.pixel(100, 85), curve_colours[2]);
  QCOMPARE(image.pixel(100, 86), curve_colours[3]);
}

namespace {
const int registered = register_test<TestLiveView>();
}

#include "test_live_view.moc"
