#include "print/paper.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

#include "base/own_glyphs.h"
#include "print/page.h"

namespace {

constexpr double twips_per_point = 20;
constexpr double smallest_share = 2.0 / 3.0;

// Sized in twips and laid out without hinting, so that a line is equally long on every device. The
// later families resemble the first and replace it where it is missing; a character that none of
// them has comes from any family that has it.
QFont paper_font(TextStyle style) {
  add_own_glyphs();
  QFont font;
  font.setFamilies({QStringLiteral("MS Sans Serif"), QStringLiteral("Microsoft Sans Serif"),
                    QStringLiteral("Liberation Sans"), QStringLiteral("Arial")});
  font.setStyleHint(QFont::SansSerif);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setBold(style.bold);
  font.setPixelSize(std::max(1, static_cast<int>(style.points * twips_per_point)));
  return font;
}

}  // namespace

double line_height(double points) {
  return QFontMetricsF(paper_font({points})).height();
}

double text_width(const QString& text, TextStyle style) {
  return QFontMetricsF(paper_font(style)).horizontalAdvance(text);
}

QString cut_text(const QString& text, TextStyle style, double room) {
  return QFontMetricsF(paper_font(style)).elidedText(text, Qt::ElideRight, room);
}

double points_within(double points, double step) {
  return points * std::min(1.0, step / line_height(points));
}

double Paper::device_pixel() const {
  return 1.0 / painter_.deviceTransform().m11();
}

void Paper::rule(QPointF from, QPointF to, QColor colour, double width, Rule kind) const {
  // Whole pixels, so that lines of the same width look alike everywhere.
  const double seen = std::max(1.0, std::round(width / device_pixel())) * device_pixel();
  QPen pen(QBrush(colour), seen, Qt::SolidLine, Qt::FlatCap);
  if (kind == Rule::dotted) pen.setDashPattern({twips_per_mm / 2 / seen, twips_per_mm / 2 / seen});
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.setPen(pen);
  painter_.drawLine(from, to);
  painter_.setRenderHint(QPainter::Antialiasing);
}

const Paper::Face& Paper::face(TextStyle style) const {
  if (!face_ || face_->style != style) {
    const QFont font = paper_font(style);
    face_.emplace(Face{style, font, QFontMetricsF(font)});
  }
  return *face_;
}

void Paper::text(QPointF place, const QString& text, const Line& line) const {
  QString shown = text;
  TextStyle style = line.style;
  const double full_height = height_of(style.points);
  double width = face(style).metrics.horizontalAdvance(text);
  if (width > line.room) {
    const double least = line.fit == Fit::shrink ? 0 : smallest_share;
    style.points *= std::clamp(line.room / width, least, 1.0);
    if (line.fit != Fit::shrink) {
      const auto mode = line.fit == Fit::cut ? Qt::ElideRight : Qt::ElideMiddle;
      shown = face(style).metrics.elidedText(text, mode, line.room);
    }
    width = face(style).metrics.horizontalAdvance(shown);
  }
  const Face& used = face(style);
  const double lowered = (full_height - used.metrics.height()) / 2;
  const double left = line.align == Align::left     ? place.x()
                      : line.align == Align::centre ? place.x() - width / 2
                                                    : place.x() - width;
  painter_.setFont(used.font);
  painter_.drawText(QPointF(left, place.y() + lowered + used.metrics.ascent()), shown);
}
