#include "print/page.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace {

constexpr double twips_per_point = 20;
constexpr double smallest_share = 2.0 / 3.0;

// Sized in twips and laid out without hinting, so that a line is equally long on every device. The
// later families are the likeness of the first where that one is missing.
QFont paper_font(double points) {
  QFont font;
  font.setFamilies({QStringLiteral("MS Sans Serif"), QStringLiteral("Microsoft Sans Serif"),
                    QStringLiteral("Liberation Sans"), QStringLiteral("Arial")});
  font.setStyleHint(QFont::SansSerif);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setBold(false);
  font.setPixelSize(static_cast<int>(points * twips_per_point));
  return font;
}

}  // namespace

Page::Page(QPainter& painter, QSizeF size)
    : painter_(painter),
      size_(size),
      across_(size.width() / a4_portrait.width()),
      down_(size.height() / a4_portrait.height()) {}

double Page::device_pixel() const {
  return 1.0 / painter_.deviceTransform().m11();
}

void Page::rule(QPointF from, QPointF to, QColor colour, double width, Rule kind) const {
  // Whole pixels, so that lines of one width look alike wherever they stand.
  const double seen = std::max(1.0, std::round(width / device_pixel())) * device_pixel();
  QPen pen(QBrush(colour), seen, Qt::SolidLine, Qt::FlatCap);
  if (kind == Rule::dotted) pen.setDashPattern({twips_per_mm / 2 / seen, twips_per_mm / 2 / seen});
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.setPen(pen);
  painter_.drawLine(from, to);
  painter_.setRenderHint(QPainter::Antialiasing);
}

double Page::line_height(double points) {
  return QFontMetricsF(paper_font(points)).height();
}

void Page::text(QPointF place, const QString& text, double points, double room, Align align) const {
  QString shown = text;
  QFont font = paper_font(points);
  QFontMetricsF metrics(font);
  double width = metrics.horizontalAdvance(text);
  // A smaller line keeps its middle where the line of full size has it.
  double lowered = 0;
  if (width > room) {
    const double full_height = metrics.height();
    font = paper_font(points * std::clamp(room / width, smallest_share, 1.0));
    metrics = QFontMetricsF(font);
    shown = metrics.elidedText(text, Qt::ElideRight, room);
    width = metrics.horizontalAdvance(shown);
    lowered = (full_height - metrics.height()) / 2;
  }
  const double left = align == Align::left     ? place.x()
                      : align == Align::centre ? place.x() - width / 2
                                               : place.x() - width;
  painter_.setFont(font);
  painter_.drawText(QPointF(left, place.y() + lowered + metrics.ascent()), shown);
}
