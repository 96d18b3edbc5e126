#include "print/graph_page.h"

#include <QPainter>

#include <algorithm>
#include <utility>

#include "base/errors.h"
#include "base/numbers.h"
#include "print/curve_ink.h"
#include "print/graph_header.h"
#include "print/page.h"
#include "print/paper.h"
#include "views/graph_view.h"

namespace {

// All in millimetres of portrait A4.
constexpr double left_mm = 20;
constexpr double right_mm = 190;
constexpr double scale_column_mm = 12;
constexpr double frame_mm = 75;
constexpr double heading_mm = 5;
constexpr double under_headings_mm = 1.75;
constexpr double times_mm = 10;
constexpr double between_mm = 4;
constexpr double bottom_mm = 287;
constexpr double gap_mm = 0.5;
constexpr double scale_gap_mm = 1;
constexpr double sample_line_mm = 10;
// Columns of ink narrower than this are finer than paper shows.
constexpr double finest_column_mm = 0.05;

constexpr double points = 9;
constexpr int time_steps = 4;

// In twips.
constexpr double thin_line = 6;
constexpr double frame_line = 12;

// One frame with its headings, scales, curves and times.
class Graph {
 public:
  Graph(const Paper& paper, const Page& page, const PrintedView& view, const GraphPlace& place)
      : paper_(paper),
        page_(page),
        view_(view),
        place_(place),
        count_(view.recording.ViewCount),
        frame_(QPointF(page.across(place.frame_left), page.down(place.frame_top)),
               QPointF(page.across(right_mm), page.down(place.frame_top + place.frame_height))),
        column_(std::max(paper.device_pixel(), page.across(finest_column_mm))) {}

  void draw() const {
    for (std::size_t column = 0; column < place_.slots_shown.size(); ++column) draw_scale(column);
    draw_grid();
    if (count_ >= 2) draw_curves();
    draw_frame();
    draw_times();
  }

 private:
  QPainter& painter() const { return paper_.painter(); }
  double row_y(int row) const { return frame_.top() + frame_.height() * row / scale_steps; }
  double time_x(int step) const { return frame_.left() + frame_.width() * step / time_steps; }

  // Throws BoundsError if the view has samples outside the arrays.
  CurveSamples samples_of(int slot) const {
    const Recording& recording = view_.recording;
    recording.require_samples(view_.start, count_);
    const std::ptrdiff_t first = std::ptrdiff_t{view_.start} * Recording::channel_slots + slot;
    return {recording.all_values().data() + first, Recording::channel_slots, count_};
  }

  CurvePlace place_of(int slot) const {
    const auto c = static_cast<std::size_t>(slot);
    const double shift = place_.slots_shown.size() > 1 ? double{channel_shift_twips} * slot : 0;
    return {frame_.size(), view_.high[c], view_.low[c], shift};
  }

  CurveLook look_of(int slot) const {
    const bool dashed = count_ < 2 || is_dashed(samples_of(slot), place_of(slot));
    return {static_cast<std::size_t>(slot), dashed, column_, frame_.height()};
  }

  void draw_scale(std::size_t column) const {
    const int slot = place_.slots_shown[column];
    const auto c = static_cast<std::size_t>(slot);
    draw_heading(column);
    if (count_ < 2) return;
    const double left = page_.across(left_mm + scale_column_mm * static_cast<double>(column));
    const double right = left + page_.across(scale_column_mm - scale_gap_mm);
    const double size = points_within(points, frame_.height() / scale_steps);
    const Paper::Line line = {{size}, right - left, Paper::Align::right, Paper::Fit::shrink};
    painter().setPen(QColor(paper_colours[c]));
    for (int row = 0; row <= scale_steps; ++row) {
      const QPointF place(right, row_y(row) - line_height(size) / 2);
      paper_.text(place, scale_label(view_.high[c], view_.low[c], row), line);
    }
  }

  // The headings are one under the other, each beginning above its own column of values, so that a
  // name may be wider than a column.
  void draw_heading(std::size_t column) const {
    const auto nth = static_cast<double>(column);
    const auto c = static_cast<std::size_t>(place_.slots_shown[column]);
    const double size = points_within(points, page_.down(heading_mm));
    const double left = page_.across(left_mm + scale_column_mm * nth);
    const double top = page_.down(place_.top + heading_mm * nth);
    draw_sample_line(place_.slots_shown[column], {left, top + line_height(size) / 2});
    painter().setPen(Qt::black);
    const double text_left = left + page_.across(scale_column_mm);
    paper_.text({text_left, top}, view_.recording.channel(c).name_and_unit(),
                {{size}, page_.across(right_mm) - text_left});
  }

  void draw_sample_line(int slot, QPointF from) const {
    constexpr std::array<float, 2> level = {0, 0};
    const CurvePlace place = {{page_.across(sample_line_mm), 0}};
    CurveLook look = look_of(slot);
    look.height = 0;
    painter().save();
    painter().translate(from);
    draw_ink(painter(), paper_curve({level.data(), 1, 2}, place, column_), look);
    painter().restore();
  }

  void draw_grid() const {
    const QColor grey(128, 128, 128);
    for (int row = 0; row <= scale_steps; ++row) {
      paper_.rule({frame_.left(), row_y(row)}, {frame_.right(), row_y(row)}, grey, thin_line,
                  Paper::Rule::dotted);
    }
    for (int step = 0; step <= time_steps; ++step) {
      paper_.rule({time_x(step), frame_.top()}, {time_x(step), frame_.bottom()}, grey, thin_line,
                  Paper::Rule::dotted);
    }
  }

  // The curve with the most ups and downs comes first, so that it does not hide calmer ones.
  std::vector<int> slots_from_the_back() const {
    std::vector<std::pair<double, int>> order;
    for (const int slot : place_.slots_shown) {
      order.emplace_back(-ups_and_downs(samples_of(slot), place_of(slot)), slot);
    }
    std::sort(order.begin(), order.end());
    std::vector<int> from_the_back(order.size());
    std::transform(order.begin(), order.end(), from_the_back.begin(),
                   [](const auto& entry) { return entry.second; });
    return from_the_back;
  }

  void draw_curves() const {
    painter().save();
    painter().setClipRect(frame_);
    painter().translate(frame_.topLeft());
    for (const int slot : slots_from_the_back()) {
      draw_ink(painter(), paper_curve(samples_of(slot), place_of(slot), column_), look_of(slot));
    }
    painter().restore();
  }

  void draw_frame() const {
    const auto line = [this](QPointF from, QPointF to) {
      paper_.rule(from, to, Qt::black, frame_line);
    };
    line(frame_.topLeft(), frame_.topRight());
    line(frame_.topRight(), frame_.bottomRight());
    line(frame_.bottomRight(), frame_.bottomLeft());
    line(frame_.bottomLeft(), frame_.topLeft());
  }

  // The date is above the time of day, so that five of them fit side by side.
  void draw_times() const {
    painter().setPen(Qt::black);
    const double room = frame_.width() / time_steps - page_.across(gap_mm);
    const Paper::Line line = {{points}, room, Paper::Align::centre, Paper::Fit::shrink};
    // Below the scale's lowest value, which reaches half a line below the frame.
    const double top = frame_.bottom() + line_height(points) / 2;
    for (int step = 0; step <= time_steps; ++step) {
      const double offset = round_half_even((count_ - 1) * (step / double{time_steps}));
      const QString& time =
          view_.recording.SampleTimes(std::int64_t{view_.start} + static_cast<int>(offset));
      paper_.text({time_x(step), top}, time.section(u' ', 0, 0), line);
      paper_.text({time_x(step), top + line_height(points)}, time.section(u' ', 1), line);
    }
  }

  const Paper& paper_;
  const Page& page_;
  const PrintedView& view_;
  const GraphPlace& place_;
  int count_;
  QRectF frame_;
  double column_;
};

}  // namespace

std::vector<GraphPlace> graph_places(const std::vector<int>& slots_to_print, bool combined,
                                     int header_lines) {
  const double top = header_line_mm(header_lines + 1) + between_mm;
  const auto place = [&](const std::vector<int>& slots_shown, double from, double height) {
    const auto columns = static_cast<double>(slots_shown.size());
    return GraphPlace{slots_shown, from, from + columns * heading_mm + under_headings_mm, height,
                      left_mm + columns * scale_column_mm};
  };
  if (combined) return {place(slots_to_print, top, frame_mm)};
  std::vector<GraphPlace> places;
  constexpr double around = heading_mm + under_headings_mm + times_mm + between_mm;
  const auto graphs = static_cast<double>(slots_to_print.size());
  const double share = (bottom_mm - top + between_mm) / graphs;
  const double height = std::min(frame_mm, share - around);
  for (const int slot : slots_to_print) {
    const auto nth = static_cast<double>(places.size());
    const double pitch = height + around;
    places.push_back(place({slot}, top + pitch * nth, height));
  }
  return places;
}

void draw_graph_page(QPainter& painter, QSizeF size, const PrintedView& view) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::black);
  const Page page(size);
  const Paper paper(painter);
  stop_at_first_failure([&] {
    const int lines = draw_graph_header(paper, page, view);
    for (const GraphPlace& place : graph_places(printed_slots(view), view.combined, lines)) {
      Graph(paper, page, view, place).draw();
    }
  });
  painter.restore();
}
