// The live graph of the Real-time Data window and its cursor.
#include <cmath>

#include "app/twips.h"
#include "monitor/frmrealtime.h"
#include "monitor/live_graph.h"

namespace {

constexpr double cursor_label_twips = 1387.5;
constexpr int cursor_label_margin = 2;

}  // namespace

void frmrealtime::RedrawGraph() {
  view_.place(Slider1->value(), live_.buffer.LiveCount());
  const auto last = view_.last_reading(live_.buffer.LiveCount());
  Label1->setText(last ? live_.buffer.LiveTimes(view_.FirstShown) : QString());
  Label2->setText(last ? live_.buffer.LiveTimes(*last) : QString());
  Pic1->redraw();
  place_cursor();
}

void frmrealtime::draw_graph(QImage& image) const {
  draw_live_graph(image, Pic1->device_dpi(), live_.buffer, view_, live_.channels().count,
                  {palette().color(QPalette::Base), palette().color(QPalette::Midlight)});
}

void frmrealtime::cmd_Click(int index) {
  view_.zoom(index);
  RedrawGraph();
}

void frmrealtime::Pic1_MouseDown(double x) {
  const auto reading = view_.nearest(x, Pic1->width() - 1, live_.buffer.LiveCount());
  if (!reading) return;
  cursor_ = live_.buffer.dropped() + view_.FirstShown + *reading;
  place_cursor();
}

// The cursor stays on its reading: it moves with the graph, and out of sight with it.
void frmrealtime::place_cursor() {
  const auto last = view_.last_reading(live_.buffer.LiveCount());
  const std::int64_t slot = cursor_ ? *cursor_ - live_.buffer.dropped() : -1;
  const bool shown = last && slot >= view_.FirstShown && slot <= *last;
  for (QWidget* part : std::initializer_list<QWidget*>{Line2, Label5, Label7}) {
    part->setVisible(shown);
  }
  if (!shown) return;
  const int width = Pic1->width() - 1;
  const double x = view_.place_of(static_cast<int>(slot) - view_.FirstShown, width);
  Line2->setGeometry(static_cast<int>(std::lround(x)), 0, 1, Pic1->height());
  Label5->setText(live_.buffer.LiveTimes(static_cast<int>(slot)));
  Label7->setText(reading_text(live_.buffer.reading(static_cast<int>(slot)), live_.channels()));
  place_cursor_label(*Label7, x, width);
  place_cursor_label(*Label5, x, width);
  Label5->move(Label5->x(), Pic1->height() - Label5->height() - Label7->y());
}

// No wider than what it is moved by at the graph's right edge, so that it stays whole there.
void frmrealtime::place_cursor_label(QLabel& label, double cursor, double graph_width) const {
  const double dpi = logicalDpiX();
  const int width = static_cast<int>(pixels_of_twips(cursor_label_twips, dpi));
  label.resize(width, label.heightForWidth(width));
  const double left = cursor_label_left(twips_of_pixels(cursor, dpi), twips_of_pixels(width, dpi),
                                        twips_of_pixels(graph_width, dpi));
  label.move(static_cast<int>(std::lround(pixels_of_twips(left, dpi))), cursor_label_margin);
}
