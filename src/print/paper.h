// Draws straight rules and lines of text on paper, alike on every device.
#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPointF>
#include <QString>

#include <optional>

class QPainter;

struct TextStyle {
  double points = 9;
  bool bold = false;

  bool operator==(const TextStyle&) const = default;
};

// The height and the width of a line of text, in twips.
double line_height(double points);
double text_width(const QString& text, TextStyle style);
// The text, its end replaced by dots if it is wider than `room` twips.
QString cut_text(const QString& text, TextStyle style, double room);
// The text size in points for lines `step` twips apart: `points`, or less if lines of that size
// would overlap.
double points_within(double points, double step);

// Draws with a painter whose unit is the twip.
class Paper {
 public:
  explicit Paper(QPainter& painter) : painter_(painter) {}

  QPainter& painter() const { return painter_; }
  // The size of a device pixel, in twips.
  double device_pixel() const;

  // Draws a horizontal or vertical line, sharp and a whole number of pixels wide. A dotted one has
  // dots and gaps of half a millimetre.
  enum class Rule { solid, dotted };
  void rule(QPointF from, QPointF to, QColor colour, double width, Rule kind = Rule::solid) const;

  enum class Align { left, centre, right };
  // How a text wider than its room is made to fit. It is set smaller, down to two thirds of its
  // size; then `cut` replaces its end, `cut_middle` its middle by dots. `shrink`, for numbers, sets
  // it as small as necessary.
  enum class Fit { cut, cut_middle, shrink };
  struct Line {
    TextStyle style;
    // In twips.
    double room = 0;
    Align align = Align::left;
    Fit fit = Fit::cut;
  };
  // Draws one line of text. `place` is the left, middle or right of its line box's top, by `align`.
  // A line set smaller keeps the middle of the full-size line.
  void text(QPointF place, const QString& text, const Line& line) const;

  // The same as line_height(), but faster.
  double height_of(double points) const { return face({points}).metrics.height(); }

 private:
  struct Face {
    TextStyle style;
    QFont font;
    QFontMetricsF metrics;
  };
  const Face& face(TextStyle style) const;

  QPainter& painter_;
  // The face used last: making one costs as much as drawing with it.
  mutable std::optional<Face> face_;
};
