#include <QTest>

#include <random>

#include "app/errors.h"
#include "support/plain_graph.h"
#include "support/runner.h"
#include "views/filled_recording.h"
#include "views/graph_picture.h"

namespace {

constexpr QRgb white = qRgb(255, 255, 255);

// By `kind`: noise, smooth, steps, spikes far outside, the same in all channels.
GraphCurves curves(std::size_t kind, int samples, int channels, unsigned seed) {
  std::mt19937 random(seed);
  GraphCurves result;
  result.channels.assign(static_cast<std::size_t>(channels), {{}, 120, -40});
  for (int c = 1; GraphCurves::Channel & channel : result.channels) {
    for (int i = 0; i < samples; ++i) {
      const float any = std::uniform_real_distribution<float>(-40, 120)(random);
      const auto wave = [i](int speed) { return std::sin(static_cast<float>(i * speed) / 500); };
      const std::array values = {any, 40 + 60 * wave(c) + any / 100, random() % 8 ? 33 : any,
                                 any * (random() % 50 ? 3.0F : 1e9F), std::round(30 * wave(1))};
      channel.values.push_back(values[kind]);
    }
    ++c;
  }
  return result;
}

QImage blank(const PictureSize& size) {
  QImage image(size.pixels, QImage::Format_RGB32);
  image.fill(white);
  return image;
}

}  // namespace

class TestGraphPicture : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void same_pixels_as_the_plain_drawing() {
    unsigned seed = 0;
    for (const QSize size : {QSize(513, 510), {97, 300}, {7, 5}, {1, 9}, {9, 1}}) {
      for (const int samples : {2, 5, size.width() + 1, 2 * size.width() + 1, 9 * size.width()}) {
        for (std::size_t kind = 0; kind < 5; ++kind) {
          const int channels = 1 + static_cast<int>(++seed % 4);
          const GraphCurves all = curves(kind, std::max(2, samples), channels, seed);
          const PictureSize picture = picture_size(size, seed % 3 == 0 ? 1.25 : 1);
          QImage plain = blank(picture);
          draw_curves_plainly(plain, all, picture);
          QVERIFY(kind > 0 || plain != blank(picture));
          QImage ours = blank(picture);
          draw_curves(ours, all, sample_columns(all.samples(), picture), picture);
          QVERIFY2(ours == plain, qPrintable(QStringLiteral("seed %1").arg(seed)));
        }
      }
    }
  }

  void points() {
    const PictureSize size = picture_size({513, 510}, 1);
    QCOMPARE(sample_columns(3, size), std::vector<int>({0, 256, 512}));
    const ValueRows row_of({{}, 120, -40}, 0, size);
    QCOMPARE(row_of(120), 0);
    QCOMPARE(row_of(-40), 509);
    for (const float above : {121.0F, 3e38F, std::nanf("")}) QVERIFY(row_of(above) < 0);
    // Where a device pixel is a twip, channels lie three of them apart.
    const GraphCurves::Channel channel{{}, 10, 0};
    const PictureSize fine = picture_size({100, 100}, 15);
    QCOMPARE(ValueRows(channel, 3, fine)(3.3F), ValueRows(channel, 0, fine)(3.3F) + 9);
  }

  // On fine screens a line is as wide as a pixel of the window.
  void grid_and_samples() {
    Recording recording;
    fill(recording, 200, 2);
    const PictureSize size = picture_size({77, 200}, 3);
    QImage image = blank(size);
    GraphPicture picture;
    GraphCurves& taken = picture.new_curves();
    QVERIFY_THROWS_EXCEPTION(BoundsError, taken.take(recording, -1, 5));
    QVERIFY_THROWS_EXCEPTION(BoundsError, taken.take(recording, 30000, 2));
    taken.take(recording, 10, 100);
    QCOMPARE(taken.channels[1].values.front(), 110.0F);
    QCOMPARE(taken.channels[1].values.back(), 209.0F);
    taken.channels = {{{5, 5}, 10, 0}};
    const PictureSize before = picture_size({7, 9}, 3);
    QImage small = blank(before);
    picture.draw(small, before, white);
    picture.draw(image, size, white);
    for (const QPoint edge : {QPoint(0, 99), {230, 99}, {99, 0}, {99, 599}, {14, 20}}) {
      QCOMPARE(image.pixel(edge), grid_colour);
    }
    int rows = 0;
    for (int y = 0; y < 600; ++y) rows += image.pixel(230, y) == curve_colours[0] ? 1 : 0;
    QCOMPARE(rows, 3);
  }
};

const int registered = register_test<TestGraphPicture>();
#include "test_graph_picture.moc"
