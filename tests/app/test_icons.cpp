#include <QImage>
#include <QPalette>
#include <QTest>

#include <algorithm>

#include "app/icons.h"
#include "support/runner.h"

class TestIcons : public QObject {
  Q_OBJECT
 private Q_SLOTS:
  void every_command_can_be_read_data();
  void every_command_can_be_read();
  void drawings_fill_any_scale();
  void unknown_key_has_no_picture();
};

namespace {

QPalette palette_of(const char* window, const char* text) {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(QLatin1String(window)));
  palette.setColor(QPalette::WindowText, QColor(QLatin1String(text)));
  return palette;
}

QImage drawn(const QIcon& icon, int size, qreal scale, QIcon::Mode mode = QIcon::Normal) {
  return icon.pixmap(QSize(size, size), scale, mode)
      .toImage()
      .convertToFormat(QImage::Format_ARGB32);
}

// The largest difference in lightness, 0..255, between the window and the picture laid over it.
int contrast(const QImage& image, const QColor& window) {
  int largest = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      const int difference = std::abs(qGray(pixel.rgb()) - qGray(window.rgb()));
      largest = std::max(largest, difference * pixel.alpha() / 255);
    }
  }
  return largest;
}

// The rectangle of the pixels that are not fully transparent.
QRect inked(const QImage& image) {
  QRect all;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) != 0) all |= QRect(x, y, 1, 1);
    }
  }
  return all;
}

}  // namespace

void TestIcons::every_command_can_be_read_data() {
  QTest::addColumn<QString>("key");
  for (const char* key : {"open", "save", "outputs", "prints", "link", "unlink", "identity", "read",
                          "history", "realtime", "about"}) {
    QTest::newRow(key) << QString::fromLatin1(key);
  }
}

void TestIcons::every_command_can_be_read() {
  QFETCH(QString, key);
  for (const auto& [window, text] : {std::pair("#f4f4f4", "#111111"), {"#232629", "#eeeeee"}}) {
    const QIcon icon = command_icon(key, palette_of(window, text));
    for (const auto& [size, scale] : {std::pair(16, 1.0), {24, 1.0}, {24, 2.0}, {64, 2.0}}) {
      const QImage image = drawn(icon, size, scale);
      QCOMPARE(image.width(), qRound(size * scale));
      const int normal = contrast(image, QColor(QLatin1String(window)));
      QVERIFY2(normal > 110, qPrintable(QStringLiteral("%1: %2").arg(size).arg(normal)));
      const int disabled =
          contrast(drawn(icon, size, scale, QIcon::Disabled), QColor(QLatin1String(window)));
      QVERIFY2(disabled > 30 && disabled * 2 < normal, qPrintable(QString::number(disabled)));
    }
  }
}

void TestIcons::drawings_fill_any_scale() {
  const QPalette palette = palette_of("#ffffff", "#000000");
  for (const QIcon& icon : {command_icon(QStringLiteral("open"), palette), application_icon()}) {
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
      const QImage image = drawn(icon, 24, scale);
      QCOMPARE(image.devicePixelRatio(), scale);
      QCOMPARE(image.size(), QSize(24, 24) * scale);
      QVERIFY(inked(image).width() > image.width() * 3 / 4);
    }
  }
}

void TestIcons::unknown_key_has_no_picture() {
  QVERIFY(command_icon(QStringLiteral("nothing"), QPalette()).isNull());
  QVERIFY(command_icon(QString(), QPalette()).isNull());
}

namespace {
const int registered = register_test<TestIcons>();
}

#include "test_icons.moc"
