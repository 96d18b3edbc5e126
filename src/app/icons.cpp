#include "app/icons.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

// The two colours in the drawings' sources; command_icon() replaces them.
constexpr char source_ink[] = "#202428";
constexpr char source_accent[] = "#1f7fa6";
constexpr auto accent_on_light = "#1f7fa6";
constexpr auto accent_on_dark = "#63bde2";
constexpr float disabled_opacity = 0.38F;

// Draws from the source on demand: a fixed set of pixmaps would be blurred at 125 or 150 %.
class SvgIconEngine final : public QIconEngine {
 public:
  SvgIconEngine(QByteArray source, QString cache_key)
      : source_(std::move(source)), cache_key_(std::move(cache_key)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const QString key = QStringLiteral("%1/%2x%3/%4")
                            .arg(cache_key_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(static_cast<int>(mode == QIcon::Disabled));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer drawing(source_);
    drawing.setAspectRatioMode(Qt::KeepAspectRatio);
    drawing.render(&painter);
    if (mode == QIcon::Disabled) {
      // Fades the finished picture: if each line were faded, crossings would be darker.
      painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
      painter.fillRect(pixmap.rect(), QColor::fromRgbF(0, 0, 0, disabled_opacity));
    }
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SvgIconEngine(*this); }
  bool isNull() override { return source_.isEmpty(); }

 private:
  QByteArray source_;
  QString cache_key_;
};

QByteArray drawing_source(const QString& name) {
  QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

QIcon command_icon(const QString& key, const QPalette& palette) {
  QByteArray source = drawing_source(key);
  if (source.isEmpty()) return {};
  const QColor ink = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor paper = palette.color(QPalette::Active, QPalette::Window);
  const bool on_dark = paper.lightness() < ink.lightness();
  source.replace(source_ink, ink.name().toLatin1());
  source.replace(source_accent, on_dark ? accent_on_dark : accent_on_light);
  return QIcon(new SvgIconEngine(
      source,
      QStringLiteral("corvane/%1/%2/%3").arg(key, ink.name()).arg(static_cast<int>(on_dark))));
}

QIcon application_icon() {
  return QIcon(
      new SvgIconEngine(drawing_source(QStringLiteral("corvane")), QStringLiteral("corvane")));
}
