#include <QTest>

#include <cmath>
#include <random>

#include "base/errors.h"
#include "base/picture_box.h"
#include "support/plain_graph.h"
#include "support/recordings.h"
#include "support/runner.h"
#include "views/graph_view.h"
#include "views/statistics.h"

namespace {

constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb black = qRgb(0, 0, 0);

// By `kind`: noise, smooth, steps, spikes far outside, the same in all channels.
GraphCurves curves(std::size_t kind, int samples, int channels, unsigned seed) {
  std::mt19937 random(seed);
  GraphCurves result;
  for (int c = 1; c <= channels; ++c) {
    result.channels.push_back({{}, 120, -40});
    for (int i = 0; i < samples; ++i) {
      const float any = std::uniform_real_distribution<float>(-40, 120)(random);
      const auto wave = [i](int speed) { return std::sin(static_cast<float>(i * speed) / 500); };
      const std::array values = {any, 40 + 60 * wave(c) + any / 100, random() % 8 ? 33 : any,
                                 any * (random() % 50 ? 3.0F : 1e9F), std::round(30 * wave(1))};
      result.channels.back().values.push_back(values[kind]);
    }
  }
  return result;
}

PictureSize sized(QSize logical, double ratio) {
  return picture_size(logical, (QSizeF(logical) * ratio).toSize(), ratio);
}

}  // namespace

class TestViewsLogic : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  // Also with upside-down limits, curves that leave the picture, and screens of several scales.
  void same_pixels_as_the_plain_drawing() {
    unsigned seed = 0;
    for (const QSize size : {QSize(113, 110), {97, 50}, {7, 5}, {5, 9}}) {
      for (const int samples : {2, 5, size.width() + 1, 2 * size.width() + 1, 9 * size.width()}) {
        for (std::size_t kind = 0; kind < 5; ++kind) {
          for (const auto& [high, low] : {std::pair{120.0F, -40.0F}, {-40, 120}, {30, 60}}) {
            GraphPicture picture;
            GraphCurves& all = picture.curves_to_fill();
            ++seed;
            all = curves(kind, std::max(2, samples), 1 + static_cast<int>(seed % 4), seed);
            for (GraphCurves::Channel& channel : all.channels)
              channel = {channel.values, high, low};
            const PictureSize picture_size =
                sized(size, std::array{1.0, 1.25, 2.0, 3.0}[seed / 4 % 4]);
            QImage ours(picture_size.pixels, QImage::Format_RGB32);
            picture.draw(ours, picture_size, {white, black});
            QVERIFY2(ours == plain_picture(all, picture_size, white),
                     qPrintable(QStringLiteral("seed %1").arg(seed)));
          }
        }
      }
    }
  }

  // The chosen curve has three pixels and an edge of one; the other is thin and pale below it.
  void curve_brought_forward() {
    GraphPicture picture;
    picture.curves_to_fill().channels = {{{5, 5}, 10, 0}, {{5, 5}, 10, 0}};
    picture.bring_forward(0);
    QImage image(100, 101, QImage::Format_RGB32);
    picture.draw(image, sized(image.size(), 1), {white, black});
    QString column;
    for (int y = 46; y < 55; ++y) {
      const QRgb colour = image.pixel(33, y);
      column += colour == white             ? u'.'
                : colour == black           ? u'e'
                : colour == qRgb(255, 0, 0) ? u'r'
                                            : u'?';
    }
    QCOMPARE(column, "..errre..");
  }

  // At any scale of the screen the picture reaches the widget's last device column and row.
  void fills_the_widget() {
    QWidget page;
    PictureBox box([](QImage& image) { image.fill(Qt::red); }, &page);
    box.setGeometry(3, 5, 101, 33);
    for (const double ratio : {1.25, 1.5, 1.75}) {
      QPixmap screen((QSizeF(110, 40) * ratio).toSize());
      screen.setDevicePixelRatio(ratio);
      page.render(&screen, {}, QRect(0, 0, 110, 40));
      const QImage seen = screen.toImage();
      const QPoint first(qRound(3 * ratio), qRound(5 * ratio));
      const QPoint last(qRound(104 * ratio) - 1, qRound(38 * ratio) - 1);
      QVERIFY(seen.pixelColor(first) == Qt::red && seen.pixelColor(last) == Qt::red);
    }
  }

  void points_of_the_picture() {
    const PictureSize size = sized({513, 510}, 1);
    QCOMPARE(sample_columns(3, size), std::vector<int>({0, 256, 512}));
    const ValueRows row_of({{}, 120, -40}, 0, size);
    QCOMPARE(row_of(120), 0);
    QCOMPARE(row_of(-40), 509);
    for (const float above : {121.0F, 3e38F, std::nanf("")}) QVERIFY(row_of(above) < 0);
    // Where a device pixel is a twip, neighbouring channels lie three pixels apart.
    const GraphCurves::Channel channel{{}, 10, 0};
    PictureSize fine = sized({100, 100}, 15);
    fine.line = 1;
    QCOMPARE(ValueRows(channel, 3, fine)(3.3F), ValueRows(channel, 0, fine)(3.3F) + 9);
    // Lines of two device pixels end at the picture's edge.
    QCOMPARE(sample_columns(3, sized({513, 510}, 2)), std::vector<int>({0, 512, 1024}));
  }

  // Ties go to even.
  void view_and_cursor() {
    QCOMPARE(view_start(3, 4, 7, 1), 4);
    QCOMPARE(view_start(1, 4, 7, 1), 2);
    // The test for the end uses the number of samples, the position one less.
    QCOMPARE(view_start(6, 7, 1000, 143), 857);
    QCOMPARE(view_start(9, 10, 1000, 100), 899);
    QCOMPARE(zoomed(Zoom::out, 10, 1000), 12);
    QCOMPARE(zoomed(Zoom::out, 900, 1000), 1000);
    QCOMPARE(zoomed(Zoom::out, 1000, 1000), std::nullopt);
    QCOMPARE(zoomed(Zoom::in, 2, 2), 2);
    QCOMPARE(page_of(5) + 10 * page_of(25), 21);
    QCOMPARE(cursor_sample(4000, 8000, 6), 2);
    QCOMPARE(cursor_sample(4000, 8000, 8), 4);
    // A sample's place leads back to the sample, so a cursor that is set again does not move.
    for (int sample = 0; sample < 30001; ++sample) {
      QCOMPARE(cursor_sample(cursor_x(sample, 7695, 30001), 7695, 30001), sample);
    }
  }

  void scales() {
    const auto scale = [](const std::optional<ScaleLimits>& limits) {
      const ChannelScale made = channel_scale(std::array{7.0F, 20.0F, -3.5F}, limits);
      const QStringList labels(made.labels.begin(), made.labels.end());
      return QStringLiteral("%1 to %2: ").arg(made.low).arg(made.high) + labels.join(u',');
    };
    QCOMPARE(scale({}), "-8.5 to 25: 25.00,20.81,16.63,12.44,8.25,4.06,-0.13,-4.31,-8.50");
    QCOMPARE(scale({{10, 30}}), "29.5 to 10.5: 10.50,,,,,,,,29.50");
    QCOMPARE(scale({{0.08F, 0}}), "0 to 0.08: 0.08,0.07,0.06,0.05,0.04,0.03,0.02,0.01,0.00");
    QCOMPARE(scale({{0.0799F, 0}}), "-0.5 to 0.5799: 0.58,,,,,,,,-0.50");
    for (const ScaleLimits& beyond : {ScaleLimits{3e38F, -3e38F}, {-3e38F, 3e38F}, {1e38F, 0}}) {
      QVERIFY_THROWS_EXCEPTION(RunTimeError, scale(beyond));
    }
  }

  void statistics() {
    Recording recording;
    fill(recording, 3, 3);
    const std::array values = {0.1F, 0.2F, 0.3F, 0.0F, -0.0F, -12.02F, -2.0F, -1.0F, -3.0F};
    for (int n = 0; n < 9; ++n) {
      recording.SampleValues(n % 3, n / 3) = values[static_cast<std::size_t>(n)];
    }
    compute_statistics(recording);
    const auto& [maximum, minimum, average, unused] = recording.ChannelStats;
    // Summing first and dividing once would give ...555p-3, which QCOMPARE takes for the same.
    QVERIFY(average[0] == 0x1.99999a5555556p-3);
    QCOMPARE(maximum[0] + minimum[1], double{0.3F} + double{-12.02F});
    QCOMPARE(minimum[0] + maximum[2], double{0.1F} - 1);
    // An equal value replaces nothing, so that -0 does not replace 0.
    QVERIFY(maximum[1] == 0 && !std::signbit(maximum[1]));
    // Slots without a channel show their first sample throughout.
    for (const auto& row : {maximum, minimum, average}) QCOMPARE(row[3], 300.0);
    const QString first = recording.SampleTimes(0);
    QCOMPARE(interval_text(first, "2026-03-02 09:01:30"), "01-01-30");
    QCOMPARE(interval_text(first, "2026-03-01 07:59:59"), "23-59-59");
    QVERIFY_THROWS_EXCEPTION(ConversionError, interval_text(first, "3/1/26 8:01:00 AM"));
  }
};

const int registered = register_test<TestViewsLogic>();
#include "test_logic.moc"
