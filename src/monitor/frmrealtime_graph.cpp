// The live graph of the Real-time Data window and its cursor.
#include <cmath>

#include "app/shell.h"
#include "monitor/Frmwarn.h"
#include "monitor/frmrealtime.h"
#include "monitor/live_graph.h"

namespace {

constexpr double cursor_label_twips = 1387.5;
constexpr int cursor_label_margin = 2;

// A label of a fixed size does not have the window laid out anew with each text; it grows where a
// text is wider than those before.
void show_time(QLabel& label, const QString& time) {
  label.setText(time);
  label.setFixedSize(label.sizeHint().expandedTo(label.minimumSize()));
}

}  // namespace

void frmrealtime::RedrawGraph() {
  view_.place(Slider1->value(), live_.buffer.LiveCount());
  const auto last = view_.last_reading(live_.buffer.LiveCount());
  show_time(*Label1, last ? live_.buffer.LiveTimes(view_.FirstShown) : QString());
  show_time(*Label2, last ? live_.buffer.LiveTimes(*last) : QString());
  take_live_curves(Pic1->new_curves(), live_.buffer, view_, live_.channels().count);
  place_cursor();
}

void frmrealtime::ShowDisplayLimits() {
  const Handler running(*this);
  Frmwarn(shell_.messages(), shell_.window()).exec();
  if (!running.unloaded() && !shell_.shutting_down()) RedrawGraph();
}

void frmrealtime::cmd_Click(int index) {
  view_.zoom(index);
  RedrawGraph();
}

void frmrealtime::Pic1_MouseDown(float x) {
  const auto reading = view_.nearest(x, Pic1->twips_width(), live_.buffer.LiveCount());
  if (!reading) return;
  cursor_ = live_.buffer.dropped() + view_.FirstShown + *reading;
  place_cursor();
}

// From the newest reading shown, where there is no cursor yet.
void frmrealtime::Pic1_KeyDown(CursorStep step) {
  const auto last = view_.last_reading(live_.buffer.LiveCount());
  if (!last) return;
  const int from = cursor_slot().value_or(*last) - view_.FirstShown;
  const int to = stepped(step, from, page_of(view_.Span), view_.Span);
  cursor_ = live_.buffer.dropped() + std::min(view_.FirstShown + to, *last);
  place_cursor();
}

// The slot of the reading at the cursor, where it is in sight.
std::optional<int> frmrealtime::cursor_slot() const {
  const auto last = view_.last_reading(live_.buffer.LiveCount());
  if (!last || !cursor_) return std::nullopt;
  const std::int64_t slot = *cursor_ - live_.buffer.dropped();
  if (slot < view_.FirstShown || slot > *last) return std::nullopt;
  return static_cast<int>(slot);
}

// The cursor stays on its reading: it moves with the graph, and out of sight with it.
void frmrealtime::place_cursor() {
  const auto slot = cursor_slot();
  for (QWidget* part : std::initializer_list<QWidget*>{Line2, Label5, Label7}) {
    part->setVisible(slot.has_value());
  }
  if (!slot) {
    Pic1->show_value({});
    return;
  }
  const double x = view_.place_of(*slot - view_.FirstShown, Pic1->twips_width());
  Line2->setGeometry(Pic1->pixel(static_cast<float>(x)), 0, 1, Pic1->height());
  Label5->setText(live_.buffer.LiveTimes(*slot));
  Label7->setText(reading_text(live_.buffer.reading(*slot), live_.channels()));
  // Numbered from the first reading on: while new ones come the one at the cursor stays the same.
  Pic1->show_value(
      {.text = Label5->text() + u'\n' + Label7->text(),
       .sample = static_cast<int>(*cursor_) + 1,
       .samples = static_cast<int>(live_.buffer.dropped()) + live_.buffer.LiveCount()});
  place_cursor_label(*Label7, x);
  place_cursor_label(*Label5, x);
  Label5->move(Label5->x(), Pic1->height() - Label5->height() - Label7->y());
}

// No wider than what it is moved by at the graph's right edge, so that it stays whole there.
void frmrealtime::place_cursor_label(QLabel& label, double cursor) const {
  const int width = static_cast<int>(cursor_label_twips / twips_per_pixel);
  label.resize(width, label.heightForWidth(width));
  const double left = cursor_label_left(cursor, cursor_label_twips, Pic1->twips_width());
  const long beside = std::lround((left - cursor) / twips_per_pixel);
  label.move(Line2->x() + static_cast<int>(beside), cursor_label_margin);
}
