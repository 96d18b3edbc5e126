// A sheet of paper to draw on: positions as millimetres of an A4 page in portrait, spread over the
// paper that there is, and lines of text.
#pragma once

#include <QColor>
#include <QPointF>
#include <QSizeF>
#include <QString>

class QFont;
class QPainter;

inline constexpr double twips_per_mm = 56.7;
inline constexpr QSizeF a4_portrait{210 * twips_per_mm, 297 * twips_per_mm};

class Page {
 public:
  // `size` of the paper in twips, which are the painter's unit.
  Page(QPainter& painter, QSizeF size);

  QPainter& painter() const { return painter_; }
  QSizeF size() const { return size_; }

  // Twips from the left and the top edge of a place given in millimetres of A4 in portrait. On
  // other paper the whole page is stretched, text sizes apart.
  double across(double mm) const { return mm * twips_per_mm * across_; }
  double down(double mm) const { return mm * twips_per_mm * down_; }

  // The size of a pixel of the device, in twips.
  double device_pixel() const;

  // A straight line along an edge of the paper, crisp and a whole number of pixels wide. A dotted
  // one has dots and gaps of half a millimetre.
  enum class Rule { solid, dotted };
  void rule(QPointF from, QPointF to, QColor colour, double width, Rule kind = Rule::solid) const;

  enum class Align { left, centre, right };
  // One line of text of `points` height whose left end, middle or right end stands at `place`, on
  // which its line box hangs. Text wider than `room` twips is set smaller, down to two thirds,
  // and then cut short.
  void text(QPointF place, const QString& text, double points, double room,
            Align align = Align::left) const;
  // The height of such a line in twips.
  static double line_height(double points);

 private:
  QPainter& painter_;
  QSizeF size_;
  double across_;
  double down_;
};
