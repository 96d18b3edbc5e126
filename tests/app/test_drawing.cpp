#include <QImage>
#include <QPainter>
#include <QPalette>

#include <cmath>

#include "app/curve.h"
#include "app/icons.h"
#include "support/runner.h"

namespace {

constexpr int width = 301;
constexpr int height = 161;
using Signal = std::function<float(int)>;

CurvePlace place_for(int span) {
  return {.span = span, .size = QSizeF(width - 1, height - 1), .high = 120, .low = -40, .shift = 0};
}

QImage drawn(const std::function<void(QPainter&)>& draw) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setPen(Qt::black);
  draw(painter);
  return image;
}

QImage curve(const std::vector<float>& values, const CurvePlace& place) {
  return drawn([&](QPainter& painter) {
    draw_curve(painter, {values.data(), 1, int(values.size())}, place);
  });
}

// What the drawing is measured against: the line through all points.
QImage segments(const std::vector<float>& values, const CurvePlace& place) {
  QPolygon points;
  for (std::size_t j = 0; j < values.size(); ++j) {
    const double x = double(j) / (place.span - 1) * place.size.width();
    const double y = (120 - double(values[j])) / 160 * place.size.height();
    const QPoint point(int(std::lround(x)), int(std::lround(y)));
    // A painter leaves out the last pixel of a line whose end repeats.
    if (points.isEmpty() || points.last() != point) points << point;
  }
  return drawn([&](QPainter& painter) { painter.drawPolyline(points); });
}

// First and last inked row of a column; nothing inked is {height, -1}.
std::pair<int, int> reach(const QImage& image, int column) {
  std::pair<int, int> rows = {height, -1};
  for (int y = 0; y < image.height(); ++y) {
    if (image.pixel(column, y) == qRgb(255, 255, 255)) continue;
    rows = {std::min(rows.first, y), y};
  }
  return rows;
}

}  // namespace

class TestDrawing : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  // Where a steep segment changes from one column to the next is a matter of its rounding.
  void curve_is_the_same_picture_as_segments() {
    const Signal wave = [](int j) { return 40.0F + 60.0F * std::sin(float(j) / 40.0F); };
    const Signal noise = [](int j) { return float((j * 7919) % 100) - 20.0F; };
    const Signal step = [](int j) { return (j / 500) % 2 ? 100.0F : -30.0F; };
    for (const int span : {5, 301, 302, 450, 15000}) {
      for (const Signal& signal : {wave, noise, step}) {
        std::vector<float> values;
        for (int j = 0; j < span; ++j) values.push_back(signal(j));
        const QImage image = curve(values, place_for(span));
        const QImage expected = segments(values, place_for(span));
        for (int column = 0; column < width; ++column) {
          const auto [top, bottom] = reach(image, column);
          const auto [expected_top, expected_bottom] = reach(expected, column);
          QVERIFY2(std::abs(top - expected_top) <= 1 && std::abs(bottom - expected_bottom) <= 1,
                   qPrintable(QStringLiteral("span %1, column %2").arg(span).arg(column)));
        }
      }
    }
  }

  void readings_that_do_not_exist_are_not_drawn() {
    for (const int span : {101, 3001}) {
      const QImage image = curve(std::vector<float>(std::size_t(span / 2), 25.0F), place_for(span));
      for (int column = 0; column < width; ++column) {
        QCOMPARE(reach(image, column).second >= 0,
                 column <= (span / 2 - 1) * (width - 1.0) / (span - 1) + 0.5);
      }
    }
  }

  void values_far_outside() {
    for (const int span : {10, 1000}) {
      std::vector<float> values;
      for (int j = 0; j < span; ++j) values.push_back(j % 2 ? 3.0e38F : -3.0e38F);
      const QImage image = curve(values, place_for(span));
      int inked = 0;
      for (int column = 0; column < width; ++column) inked += reach(image, column).second >= 0;
      // Few lines cross the picture so steeply that some columns see nothing of them.
      QVERIFY(inked >= (span == 10 ? 9 : width));
    }
  }

  void nothing_to_draw() {
    const QImage blank = drawn([](QPainter&) {});
    CurvePlace narrow = place_for(20);
    narrow.size = {0, 100};
    CurvePlace no_scale = place_for(20);
    no_scale.high = no_scale.low;
    for (const CurvePlace& place : {place_for(0), place_for(1), narrow, no_scale}) {
      QCOMPARE(curve(std::vector<float>(20, 25.0F), place), blank);
    }
    QCOMPARE(curve({}, place_for(20)), blank);
    const QImage dot = drawn([](QPainter& painter) { painter.drawPoint(0, 95); });
    QCOMPARE(curve({25.0F}, place_for(20)), dot);
  }

  // On light and dark windows, at any scale; disabled ones pale.
  void icons_can_be_read() {
    for (const auto& [window, text] : {std::pair(0xF4, 0x11), {0x23, 0xEE}}) {
      QPalette palette(QColor(text, text, text), {}, {}, {}, {}, {}, {}, {},
                       QColor(window, window, window));
      // The largest difference in lightness between the window and the picture laid over it.
      const auto contrast = [&, shade = window](const char* key, qreal scale, QIcon::Mode mode) {
        const QIcon icon = command_icon(key, palette);
        const QImage image = icon.pixmap(QSize(24, 24), scale, mode).toImage();
        int largest = image.size() == QSize(24, 24) * scale ? 0 : -1000;
        for (int i = 0; i < image.width() * image.height(); ++i) {
          const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
          const int difference = std::abs(qGray(pixel.rgb()) - shade);
          largest = std::max(largest, difference * pixel.alpha() / 255);
        }
        return largest;
      };
      for (const char* key : {"open", "save", "outputs", "prints", "link", "unlink", "identity",
                              "read", "history", "realtime", "about"}) {
        for (const qreal scale : {1.0, 1.25, 2.0}) {
          const int disabled = contrast(key, scale, QIcon::Disabled);
          const int normal = contrast(key, scale, QIcon::Normal);
          QVERIFY2(normal > std::max(110, 2 * disabled) && disabled > 30, key);
        }
      }
    }
    QVERIFY(command_icon("nothing", QPalette()).isNull() && !application_icon().isNull());
  }
};

const int registered = register_test<TestDrawing>();

#include "test_drawing.moc"
