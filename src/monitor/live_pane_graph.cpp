// The live graph and its cursor.
#include <cmath>

#include "monitor/live_graph.h"
#include "monitor/live_pane.h"

namespace {

constexpr double cursor_label_twips = 1387.5;
constexpr int cursor_label_margin = 2;

// Keeps the label's size fixed, so that a new text costs the window no new layout. The label grows
// only for a text wider than all before.
void show_time(QLabel& label, const QString& time) {
  label.setText(time);
  label.setFixedSize(label.sizeHint().expandedTo(label.minimumSize()));
}

}  // namespace

void LivePane::RedrawGraph() {
  view_.place(Slider1->value(), monitor_.buffer.LiveCount());
  const auto last = view_.last_reading(monitor_.buffer.LiveCount());
  show_time(*Label1, last ? monitor_.buffer.LiveTimes(view_.FirstShown) : QString());
  show_time(*Label2, last ? monitor_.buffer.LiveTimes(*last) : QString());
  copy_live_curves(Pic1->curves_to_fill(), monitor_.buffer, view_, monitor_.channels().count);
  place_cursor();
}

void LivePane::cmd_Click(int index) {
  view_.zoom(index);
  RedrawGraph();
}

void LivePane::Pic1_MouseDown(float x) {
  const auto reading = view_.nearest(x, Pic1->twips_width(), monitor_.buffer.LiveCount());
  if (!reading) return;
  cursor_ = monitor_.buffer.dropped() + view_.FirstShown + *reading;
  place_cursor();
}

// If no cursor is in view, the step starts from the newest reading shown.
void LivePane::Pic1_KeyDown(CursorStep step) {
  const auto last = view_.last_reading(monitor_.buffer.LiveCount());
  if (!last) return;
  const int from = cursor_slot().value_or(*last) - view_.FirstShown;
  const int to = stepped(step, from, page_of(view_.Span), view_.Span);
  move_cursor(monitor_.buffer.dropped() + view_.FirstShown + to);
}

// Moves the cursor to a reading, numbered as in cursor_, or to the nearest one in view.
void LivePane::move_cursor(std::int64_t reading) {
  const auto last = view_.last_reading(monitor_.buffer.LiveCount());
  if (!last) return;
  const std::int64_t dropped = monitor_.buffer.dropped();
  cursor_ = std::clamp(reading, dropped + view_.FirstShown, dropped + *last);
  place_cursor();
}

// The slot of the reading at the cursor, if it is in view.
std::optional<int> LivePane::cursor_slot() const {
  const auto last = view_.last_reading(monitor_.buffer.LiveCount());
  if (!last || !cursor_) return std::nullopt;
  const std::int64_t slot = *cursor_ - monitor_.buffer.dropped();
  if (slot < view_.FirstShown || slot > *last) return std::nullopt;
  return static_cast<int>(slot);
}

// The cursor stays on its reading and moves with it, even out of view.
void LivePane::place_cursor() {
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
  Label5->setText(monitor_.buffer.LiveTimes(*slot));
  Label7->setText(reading_text(monitor_.buffer.reading(*slot), monitor_.channels()));
  // Counted from the first reading ever, so that new readings do not change the cursor's number.
  Pic1->show_value(
      {.text = Label5->text() + u'\n' + Label7->text(),
       .sample = static_cast<int>(*cursor_) + 1,
       .samples = static_cast<int>(monitor_.buffer.dropped()) + monitor_.buffer.LiveCount()});
  place_cursor_label(*Label7, x);
  place_cursor_label(*Label5, x);
  Label5->move(Label5->x(), Pic1->height() - Label5->height() - Label7->y());
}

// The usual width is less than the label's offset to the cursor's left, so it fits at the graph's
// right edge. A larger font can need more width; the label then moves back into the graph.
void LivePane::place_cursor_label(QLabel& label, double cursor) const {
  const int usual = static_cast<int>(cursor_label_twips / twips_per_pixel);
  const int width = std::max(usual, label.minimumSizeHint().width());
  label.resize(width, label.heightForWidth(width));
  const double left =
      cursor_label_left(cursor, width * double{twips_per_pixel}, Pic1->twips_width());
  const int beside = static_cast<int>(std::lround((left - cursor) / twips_per_pixel));
  label.move(std::max(0, std::min(Line2->x() + beside, Pic1->width() - width)),
             cursor_label_margin);
}
