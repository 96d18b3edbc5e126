#include <QTest>

#include <random>

#include "app/errors.h"
#include "support/plain_graph.h"
#include "support/runner.h"
#include "views/filled_recording.h"
#include "views/graph_layout.h"
#include "views/graph_picture.h"

class TestGraphPicture : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void same_pixels_as_the_plain_drawing_data();
  void same_pixels_as_the_plain_drawing();
  void edges_are_pixels();
  void channels_lie_three_twips_apart();
  void redrawn_from_what_was_taken();
  void wide_lines_on_fine_screens();
  void samples_outside_the_arrays();
  void layout_data();
  void layout();
};

namespace {

constexpr QRgb white = qRgb(255, 255, 255);

enum class Signal { noise, smooth, steps, spikes, equal };

float value(Signal signal, int sample, std::size_t channel, std::mt19937& random) {
  std::uniform_real_distribution<float> any(-40, 120);
  const auto turn = static_cast<float>(sample) / 500 * static_cast<float>(channel + 1);
  switch (signal) {
    case Signal::noise:
      return any(random);
    case Signal::smooth:
      return 40 + 60 * std::sin(turn) + any(random) / 100;
    case Signal::steps:
      return random() % 8 == 0 ? any(random) : 33;
    case Signal::spikes:
      return random() % 50 == 0 ? 1e9F * any(random) : any(random) * 3;
    case Signal::equal:
      return 20 + std::round(10 * std::sin(turn));
  }
  return 0;
}

GraphCurves curves(Signal signal, int samples, int channels, unsigned seed) {
  std::mt19937 random(seed);
  GraphCurves result;
  for (std::size_t c = 0; c < static_cast<std::size_t>(channels); ++c) {
    GraphCurves::Channel channel{{}, 120, -40};
    for (int i = 0; i < samples; ++i) channel.values.push_back(value(signal, i, c, random));
    result.channels.push_back(std::move(channel));
  }
  return result;
}

QImage blank(const PictureSize& size) {
  QImage image(size.pixels, QImage::Format_RGB32);
  image.fill(white);
  return image;
}

QImage drawn(const GraphCurves& curves, const PictureSize& size) {
  QImage image = blank(size);
  draw_curves(image, curves, sample_columns(curves.samples(), size), size);
  return image;
}

}  // namespace

void TestGraphPicture::same_pixels_as_the_plain_drawing_data() {
  QTest::addColumn<int>("signal");
  QTest::addColumn<QSize>("size");
  const std::array names = {"noise", "smooth", "steps", "spikes", "equal"};
  for (const QSize size :
       {QSize(513, 510), QSize(97, 300), QSize(7, 5), QSize(1, 9), QSize(9, 1), QSize(2, 2)}) {
    for (std::size_t k = 0; k < names.size(); ++k) {
      QTest::addRow("%s on %dx%d", names[k], size.width(), size.height())
          << static_cast<int>(k) << size;
    }
  }
}

void TestGraphPicture::same_pixels_as_the_plain_drawing() {
  QFETCH(int, signal);
  QFETCH(QSize, size);
  unsigned seed = 0;
  const int columns = size.width();
  for (const int samples : {2, 5, columns, columns + 1, 2 * columns + 1, 9 * columns}) {
    if (samples < 2) continue;
    for (int channels = 1; channels <= 4; ++channels) {
      const GraphCurves all = curves(static_cast<Signal>(signal), samples, channels, ++seed);
      const PictureSize picture = picture_size(size, channels == 3 ? 1.25 : 1);
      QImage plain = blank(picture);
      draw_curves_plainly(plain, all, picture);
      if (drawn(all, picture) != plain) {
        QFAIL(qPrintable(QStringLiteral("%1 samples, %2 channels").arg(samples).arg(channels)));
      }
      QVERIFY(channels != 1 || signal != 0 || plain != blank(picture));
    }
  }
}

void TestGraphPicture::edges_are_pixels() {
  const PictureSize size = picture_size({513, 510}, 1);
  QCOMPARE(size.width, 7695.0F);
  QCOMPARE(size.height, 7650.0F);
  const std::vector<int> columns = sample_columns(3, size);
  QCOMPARE(columns, std::vector<int>({0, 256, 512}));
  const ValueRows row_of({{}, 120, -40}, 0, size);
  QCOMPARE(row_of(120), 0);
  QCOMPARE(row_of(-40), 509);
  QVERIFY(row_of(121) < 0);
  QVERIFY(row_of(-41) > 509);
  QVERIFY(row_of(3e38F) < -1000000);
  QVERIFY(row_of(std::nanf("")) < -1000000);
}

void TestGraphPicture::channels_lie_three_twips_apart() {
  // A device pixel is a twip.
  const PictureSize size = picture_size({100, 100}, 15);
  const GraphCurves::Channel channel{{}, 10, 0};
  for (int slot = 1; slot < 4; ++slot) {
    const int apart = ValueRows(channel, slot, size)(3.3F) - ValueRows(channel, 0, size)(3.3F);
    QCOMPARE(apart, 3 * slot);
  }
}

void TestGraphPicture::redrawn_from_what_was_taken() {
  Recording recording;
  fill(recording, 200, 2);
  const PictureSize size = picture_size({120, 90}, 1);
  const PictureSize other = picture_size({77, 200}, 1);
  QImage image = blank(size);
  GraphPicture picture;
  picture.draw(image, size, white);
  QCOMPARE(image, blank(size));

  GraphCurves& taken = picture.new_curves();
  taken.take(recording, 10, 100);
  for (GraphCurves::Channel& channel : taken.channels) channel.high = 250;
  QCOMPARE(taken.channels[1].values.front(), 110.0F);
  QCOMPARE(taken.channels[1].values.back(), 209.0F);
  picture.draw(image, size, white);
  const QImage first = image.copy();
  QCOMPARE(first.pixel(60, 0), grid_colour);

  // Another Recording, size and background in between change nothing of it.
  fill(recording, 3, 1);
  QImage changed = blank(other);
  picture.draw(changed, other, qRgb(0, 0, 0));
  QCOMPARE(changed.pixel(1, 1), qRgb(0, 0, 0));
  QCOMPARE(changed.pixel(0, 0), grid_colour);
  picture.draw(image, size, white);
  QCOMPARE(image, first);
}

void TestGraphPicture::wide_lines_on_fine_screens() {
  const PictureSize size = picture_size({60, 40}, 3);
  GraphPicture picture;
  GraphCurves& flat = picture.new_curves();
  flat.channels = {{{5, 5}, 10, 0}};
  QImage image = blank(size);
  picture.draw(image, size, white);
  int rows = 0;
  for (int y = 0; y < image.height(); ++y) rows += image.pixel(100, y) == curve_colours[0] ? 1 : 0;
  QCOMPARE(rows, 3);
  QCOMPARE(image.pixel(1, 1), white);
}

void TestGraphPicture::samples_outside_the_arrays() {
  Recording recording;
  fill(recording, 10, 2);
  GraphCurves curves;
  QVERIFY_THROWS_EXCEPTION(BoundsError, curves.take(recording, -1, 5));
  QVERIFY_THROWS_EXCEPTION(BoundsError, curves.take(recording, 30000, 2));
  curves.take(recording, 30000, 0);
  QCOMPARE(curves.samples(), 1);
  QCOMPARE(drawn(curves, picture_size({9, 9}, 1)), blank(picture_size({9, 9}, 1)));
}

void TestGraphPicture::layout_data() {
  QTest::addColumn<QSize>("page");
  QTest::addColumn<int>("channels");
  for (const QSize page : {QSize(600, 380), QSize(660, 560), QSize(1500, 900), QSize(3400, 1900)}) {
    for (int channels = 1; channels <= 4; ++channels) {
      QTest::addRow("%dx%d, %d channels", page.width(), page.height(), channels)
          << page << channels;
    }
  }
}

// Nothing is cut off by the page, and texts of different meaning do not overlap.
void TestGraphPicture::layout() {
  QFETCH(QSize, page);
  QFETCH(int, channels);
  const GraphTexts texts = {.line = 15,
                            .scales = {45, 45, 45, 45},
                            .legend = 110,
                            .button = 22,
                            .slider = 16,
                            .channels = channels};
  const GraphLayout places = graph_layout(page, texts);
  const QRect& graph = places.Pic1;
  QVERIFY(graph.width() > page.width() / 2);
  QVERIFY(graph.height() > page.height() / 2);
  QList<QRect> apart = {graph, places.Slider1, places.Label1, places.Label2};
  apart.append(QList<QRect>(places.buttons.begin(), places.buttons.end()));
  QList<QRect> inner;
  for (std::size_t c = 0; c < static_cast<std::size_t>(channels); ++c) {
    apart << places.Label3[c] << places.Line1[c] << places.Label3[c + 4] << places.Label3[c + 8];
    for (std::size_t k = 0; k < 9; ++k) (c < 2 ? apart : inner) << places.Label4[9 * c + k];
  }
  for (qsizetype a = 0; a < apart.size(); ++a) {
    QVERIFY(QRect(QPoint(0, 0), page).contains(apart[a]));
    for (qsizetype b = 0; b < a; ++b)
      QVERIFY2(!apart[a].intersects(apart[b]),
               qPrintable(QStringLiteral("%1 and %2").arg(a).arg(b)));
  }
  for (const QRect& label : inner) QVERIFY(QRect(QPoint(0, 0), graph.size()).contains(label));
}

const int registered = register_test<TestGraphPicture>();
#include "test_graph_picture.moc"
