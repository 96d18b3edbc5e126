#include <QImage>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <functional>
#include <vector>

#include "app/curve.h"
#include "support/runner.h"

class TestCurve : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void same_picture_as_segments_data();
  void same_picture_as_segments();
  void readings_that_do_not_exist_are_not_drawn();
  void values_far_outside_data();
  void values_far_outside();
  void nothing_to_draw();
};

namespace {

constexpr int width = 301;
constexpr int height = 161;
using Signal = std::function<float(int)>;

QImage blank() {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::white);
  return image;
}

CurvePlace place_for(int span) {
  return {.span = span, .size = QSizeF(width - 1, height - 1), .high = 120, .low = -40, .shift = 0};
}

QImage drawn(const std::vector<float>& values, const CurvePlace& place) {
  QImage image = blank();
  QPainter painter(&image);
  painter.setPen(Qt::black);
  draw_curve(painter, {values.data(), 1, int(values.size())}, place);
  return image;
}

// What the drawing is measured against: the line through all points.
QImage segments(const std::vector<float>& values, const CurvePlace& place) {
  QImage image = blank();
  QPainter painter(&image);
  painter.setPen(Qt::black);
  const auto point = [&](std::size_t j) {
    const double x = double(j) / (place.span - 1) * place.size.width();
    const double y = (120 - double(values[j])) / 160 * place.size.height();
    return QPoint(int(std::lround(x)), int(std::lround(y)));
  };
  QPolygon points;
  for (std::size_t j = 0; j < values.size(); ++j) {
    // A painter leaves out the last pixel of a line whose end repeats.
    if (points.isEmpty() || points.last() != point(j)) points << point(j);
  }
  painter.drawPolyline(points);
  return image;
}

// First and last inked row of a column; nothing inked is {height, -1}.
std::pair<int, int> reach(const QImage& image, int column) {
  std::pair<int, int> rows = {height, -1};
  for (int y = 0; y < image.height(); ++y) {
    if (image.pixel(column, y) == qRgb(255, 255, 255)) continue;
    rows.first = std::min(rows.first, y);
    rows.second = y;
  }
  return rows;
}

}  // namespace

void TestCurve::same_picture_as_segments_data() {
  QTest::addColumn<Signal>("signal");
  QTest::addColumn<int>("span");
  const Signal wave = [](int j) { return 40.0F + 60.0F * std::sin(float(j) / 40.0F); };
  const Signal noise = [](int j) { return float((j * 7919) % 100) - 20.0F; };
  const Signal flat = [](int) { return 25.0F; };
  const Signal step = [](int j) { return (j / 500) % 2 ? 100.0F : -30.0F; };
  const Signal spike = [](int j) { return j == 777 ? 119.0F : 0.0F; };
  for (const int span : {5, 128, 301, 302, 450, 1000, 15000}) {
    QTest::addRow("wave, %d", span) << wave << span;
    QTest::addRow("noise, %d", span) << noise << span;
    QTest::addRow("flat, %d", span) << flat << span;
    QTest::addRow("step, %d", span) << step << span;
    QTest::addRow("spike, %d", span) << spike << span;
  }
}

void TestCurve::same_picture_as_segments() {
  QFETCH(Signal, signal);
  QFETCH(int, span);
  std::vector<float> values;
  for (int j = 0; j < span; ++j) values.push_back(signal(j));
  const QImage image = drawn(values, place_for(span));
  const QImage expected = segments(values, place_for(span));
  for (int column = 0; column < width; ++column) {
    const auto [top, bottom] = reach(image, column);
    const auto [expected_top, expected_bottom] = reach(expected, column);
    // Where a steep segment changes from one column to the next is a matter of its rounding.
    QVERIFY2(std::abs(top - expected_top) <= 1 && std::abs(bottom - expected_bottom) <= 1,
             qPrintable(QStringLiteral("column %1: %2..%3, segments %4..%5")
                            .arg(column)
                            .arg(top)
                            .arg(bottom)
                            .arg(expected_top)
                            .arg(expected_bottom)));
  }
}

void TestCurve::readings_that_do_not_exist_are_not_drawn() {
  for (const int span : {101, 3001}) {
    const QImage image = drawn(std::vector<float>(std::size_t(span / 2), 25.0F), place_for(span));
    for (int column = 0; column < width; ++column) {
      const bool inked = reach(image, column).second >= 0;
      QCOMPARE(inked, column <= (span / 2 - 1) * (width - 1.0) / (span - 1) + 0.5);
    }
  }
}

void TestCurve::values_far_outside_data() {
  QTest::addColumn<int>("span");
  QTest::newRow("segments") << 10;
  QTest::newRow("columns") << 1000;
}

void TestCurve::values_far_outside() {
  QFETCH(int, span);
  std::vector<float> values;
  for (int j = 0; j < span; ++j) values.push_back(j % 2 ? 3.0e38F : -3.0e38F);
  const QImage image = drawn(values, place_for(span));
  // The lines cross the picture so steeply that some columns see nothing of them.
  int inked = 0;
  for (int column = 0; column < width; ++column) inked += reach(image, column).second >= 0;
  QVERIFY(span == 10 ? inked >= 9 : inked == width);
}

void TestCurve::nothing_to_draw() {
  const std::vector<float> values(20, 25.0F);
  CurvePlace narrow = place_for(20);
  narrow.size = {0, 100};
  CurvePlace no_scale = place_for(20);
  no_scale.high = no_scale.low;
  for (const CurvePlace& place : {place_for(0), place_for(1), narrow, no_scale}) {
    QCOMPARE(drawn(values, place), blank());
  }
  QCOMPARE(drawn({}, place_for(20)), blank());
  QImage dot = blank();
  dot.setPixelColor(0, 95, Qt::black);
  QCOMPARE(drawn({25.0F}, place_for(20)), dot);
}

namespace {
const int registered = register_test<TestCurve>();
}

#include "test_curve.moc"
