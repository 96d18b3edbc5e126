// Drawing on paper: straight rules and lines of text, alike on every device.
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

// The height and the length of a line of text, in twips.
double line_height(double points);
double text_width(const QString& text, TextStyle style);
// The text with its end replaced by dots where it is longer than `room`.
QString cut_text(const QString& text, TextStyle style, double room);
// The size of a text whose lines stand `step` twips apart: `points`, or less where lines of that
// size would touch.
double points_within(double points, double step);

// Draws with a painter whose unit is the twip.
class Paper {
 public:
  explicit Paper(QPainter& painter) : painter_(painter) {}

  QPainter& painter() const { return painter_; }
  // The size of a pixel of the device, in twips.
  double device_pixel() const;

  // A straight line along an edge of the paper, crisp and a whole number of pixels wide. A dotted
  // one has dots and gaps of half a millimetre.
  enum class Rule { solid, dotted };
  void rule(QPointF from, QPointF to, QColor colour, double width, Rule kind = Rule::solid) const;

  enum class Align { left, centre, right };
  // What becomes of a text that is wider than its room. It is set smaller, and below two thirds of
  // its size `cut` replaces its end, `cut_middle` its middle by dots. `shrink`, for numbers, sets
  // it as small as it takes.
  enum class Fit { cut, cut_middle, shrink };
  struct Line {
    TextStyle style;
    // In twips.
    double room = 0;
    Align align = Align::left;
    Fit fit = Fit::cut;
  };
  // One line of text whose left end, middle or right end stands at `place`, on which its line box
  // hangs. A smaller line keeps its middle where the line of full size has it.
  void text(QPointF place, const QString& text, const Line& line) const;

  // line_height(), faster.
  double height_of(double points) const { return face({points}).metrics.height(); }

 private:
  struct Face {
    TextStyle style;
    QFont font;
    QFontMetricsF metrics;
  };
  const Face& face(TextStyle style) const;

  QPainter& painter_;
  // The one used last: making one costs as much as drawing with it.
  mutable std::optional<Face> face_;
};
