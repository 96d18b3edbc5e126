#include "print/graph_page.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/errors.h"
#include "base/numbers.h"
#include "print/page.h"
#include "print/paper_curve.h"

namespace {

// All in millimetres of A4 in portrait.
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
// Below this columns of samples are finer than paper shows.
constexpr double finest_column_mm = 0.05;

constexpr double points = 9;
constexpr int scale_steps = 8;
constexpr int time_steps = 4;

// In twips.
constexpr double thin_line = 6;
constexpr double frame_line = 12;
constexpr double curve_line = 17;
// Each channel is drawn this much lower than the one before, as on the screen, so that equal
// values stay apart.
constexpr double channel_shift = 3;

// Every channel has its own dashes, for paper without colours: lengths of dashes and gaps in turns,
// as multiples of the line's width. They are measured across, so that they can be told apart
// however much a curve rises and falls.
bool in_dash(std::size_t slot, double x) {
  static const std::array<std::vector<double>, Recording::max_channels> dashes = {
      {{}, {9, 4}, {3, 3}, {12, 3, 3, 3}}};
  const std::vector<double>& lengths = dashes[slot];
  if (lengths.empty()) return true;
  double rest = std::fmod(x / curve_line, std::accumulate(lengths.begin(), lengths.end(), 0.0));
  std::size_t i = 0;
  while (i + 1 < lengths.size() && rest >= lengths[i]) rest -= lengths[i++];
  return i % 2 == 0;
}

// Gaps are not empty but pale: a peak of one sample must not fall into one.
QColor pale(const QColor& colour) {
  const auto paled = [](int part) { return 255 - (255 - part) * 2 / 5; };
  return {paled(colour.red()), paled(colour.green()), paled(colour.blue())};
}

// Draws a curve as a square pen would that is led along it, what is between the dashes first.
void draw_ink(QPainter& painter, std::size_t slot, const std::vector<Ink>& inks, double column,
              double height) {
  std::array<QList<QRectF>, 2> parts;
  for (std::size_t k = 0; k < inks.size(); ++k) {
    const double top = std::max(inks[k].top, -curve_line);
    const double bottom = std::min(inks[k].bottom, height + curve_line);
    if (top > bottom) continue;
    const double x = (static_cast<double>(k) + 0.5) * column;
    parts[in_dash(slot, x) ? 1 : 0]
        << QRectF(x - curve_line / 2, top - curve_line / 2, curve_line, bottom - top + curve_line);
  }
  const QColor colour(paper_colours[slot]);
  painter.setPen(Qt::NoPen);
  for (std::size_t part = 0; part < parts.size(); ++part) {
    painter.setBrush(part == 0 ? pale(colour) : colour);
    painter.drawRects(parts[part]);
  }
  painter.setBrush(Qt::NoBrush);
}

// One frame with what belongs to it.
class Graph {
 public:
  Graph(const Page& page, const PrintedView& view, const GraphPlace& place)
      : page_(page),
        view_(view),
        place_(place),
        count_(view.recording.ViewCount),
        frame_(QPointF(page.across(place.frame_left), page.down(place.frame_top)),
               QPointF(page.across(right_mm), page.down(place.frame_top + place.frame_height))),
        column_(std::max(page.device_pixel(), page.across(finest_column_mm))) {}

  void draw() const {
    for (std::size_t column = 0; column < place_.slots_shown.size(); ++column) draw_scale(column);
    draw_grid();
    if (count_ >= 2) draw_curves();
    draw_frame();
    draw_times();
  }

 private:
  QPainter& painter() const { return page_.painter(); }
  double row_y(int row) const { return frame_.top() + frame_.height() * row / scale_steps; }
  double time_x(int step) const { return frame_.left() + frame_.width() * step / time_steps; }

  // The headings stand one under the other, each above its own column of values, so that a name
  // may be wider than a column.
  void draw_scale(std::size_t column) const {
    const int slot = place_.slots_shown[column];
    const auto c = static_cast<std::size_t>(slot);
    const auto nth = static_cast<double>(column);
    const double left = page_.across(left_mm + scale_column_mm * nth);
    const double right = page_.across(left_mm + scale_column_mm * (nth + 1) - scale_gap_mm);
    const double top = page_.down(place_.top + heading_mm * nth);
    const auto& info = view_.recording.ChannelInfo;
    draw_sample_line(c, {left, top + Page::line_height(points) / 2});
    painter().setPen(Qt::black);
    const double text_left = left + page_.across(scale_column_mm);
    page_.text({text_left, top}, info[1][c] + u' ' + info[2][c], points,
               page_.across(right_mm) - text_left);
    if (count_ < 2) return;
    const double step = frame_.height() / scale_steps;
    const double size = points * std::min(1.0, step / Page::line_height(points));
    for (int row = 0; row <= scale_steps; ++row) {
      const double high = view_.high[c];
      const double value = high + (view_.low[c] - high) * row / scale_steps;
      page_.text({right, row_y(row) - Page::line_height(size) / 2}, fixed2(value), size,
                 right - left, Page::Align::right);
    }
  }

  void draw_sample_line(std::size_t c, QPointF from) const {
    constexpr std::array<float, 2> level = {0, 0};
    const CurvePlace place = {{page_.across(sample_line_mm), 0}};
    painter().save();
    painter().translate(from);
    draw_ink(painter(), c, paper_curve({level.data(), 1, 2}, place, column_), column_, 0);
    painter().restore();
  }

  void draw_grid() const {
    const QColor grey(128, 128, 128);
    for (int row = 0; row <= scale_steps; ++row) {
      page_.rule({frame_.left(), row_y(row)}, {frame_.right(), row_y(row)}, grey, thin_line,
                 Page::Rule::dotted);
    }
    for (int step = 0; step <= time_steps; ++step) {
      page_.rule({time_x(step), frame_.top()}, {time_x(step), frame_.bottom()}, grey, thin_line,
                 Page::Rule::dotted);
    }
  }

  void draw_curves() const {
    const Recording& recording = view_.recording;
    const std::int64_t end = std::int64_t{view_.start} + count_ - 1;
    painter().save();
    painter().setClipRect(frame_);
    painter().translate(frame_.topLeft());
    for (const int slot : place_.slots_shown) {
      const auto c = static_cast<std::size_t>(slot);
      recording.SampleValues(view_.start, slot);
      recording.SampleValues(end, slot);
      const CurveSamples samples = {recording.all_values().data() +
                                        std::ptrdiff_t{view_.start} * Recording::channel_slots +
                                        slot,
                                    Recording::channel_slots, count_};
      const double shift = place_.slots_shown.size() > 1 ? channel_shift * slot : 0;
      const CurvePlace place = {frame_.size(), view_.high[c], view_.low[c], shift};
      draw_ink(painter(), c, paper_curve(samples, place, column_), column_, frame_.height());
    }
    painter().restore();
  }

  void draw_frame() const {
    const auto line = [this](QPointF from, QPointF to) {
      page_.rule(from, to, Qt::black, frame_line);
    };
    line(frame_.topLeft(), frame_.topRight());
    line(frame_.topRight(), frame_.bottomRight());
    line(frame_.bottomRight(), frame_.bottomLeft());
    line(frame_.bottomLeft(), frame_.topLeft());
  }

  // Date over time of day, so that five of them stand side by side.
  void draw_times() const {
    painter().setPen(Qt::black);
    const double room = frame_.width() / time_steps - page_.across(gap_mm);
    // Below the lowest value of the scale, which stands half a line below the frame.
    const double top = frame_.bottom() + Page::line_height(points) / 2;
    for (int step = 0; step <= time_steps; ++step) {
      const double offset = round_half_even((count_ - 1) * (step / double{time_steps}));
      const QString& time =
          view_.recording.SampleTimes(std::int64_t{view_.start} + static_cast<int>(offset));
      page_.text({time_x(step), top}, time.section(u' ', 0, 0), points, room, Page::Align::centre);
      page_.text({time_x(step), top + Page::line_height(points)}, time.section(u' ', 1), points,
                 room, Page::Align::centre);
    }
  }

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
  const Page page(painter, size);
  stop_at_first_failure([&] {
    const int lines = draw_header(page, view);
    for (const GraphPlace& place : graph_places(printed_slots(view), view.combined, lines)) {
      Graph(page, view, place).draw();
    }
  });
  painter.restore();
}
