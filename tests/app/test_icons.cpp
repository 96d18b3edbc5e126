#include <QImage>
#include <QPalette>

#include "app/icons.h"
#include "support/runner.h"

class TestIcons : public QObject {
  Q_OBJECT
 private Q_SLOTS:
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

const int registered = register_test<TestIcons>();

#include "test_icons.moc"
