#include "print/graph_header.h"

#include "data/export_lines.h"
#include "print/page.h"
#include "print/paper.h"
#include "print/printed_view.h"

namespace {

constexpr double header_points = 10.5;
constexpr double left_mm = 31.7;
constexpr double right_margin_mm = 10;

}  // namespace

int draw_graph_header(const Paper& paper, const Page& page, const PrintedView& view) {
  const Recording& recording = view.recording;
  const double left = page.across(left_mm);
  const double room = page.size().width() - left - page.across(right_margin_mm);
  // In landscape the lines are closer together.
  const double points =
      points_within(header_points, page.down(header_line_mm(2) - header_line_mm(1)));
  int line = 0;
  const auto add = [&](const QString& text, Paper::Fit fit = Paper::Fit::cut) {
    ++line;
    const Paper::Line look = {{points}, room, Paper::Align::left, fit};
    paper.text({left, page.down(header_line_mm(line))}, text, look);
  };
  add(QStringLiteral("Title：") + recording.Title);
  add(QStringLiteral("Channels:") + QString::number(recording.ChannelCount));
  add(QStringLiteral("Length:") + QString::number(recording.ViewCount));
  add(QStringLiteral("Start Time：") + recording.SampleTimes(view.start));
  const std::int64_t end = std::int64_t{view.start} + recording.ViewCount - 1;
  add(QStringLiteral("End Time：") + recording.SampleTimes(end));
  for (const int slot : printed_slots(view)) {
    // The cut spares the name at the start and the statistics at the end.
    add(channel_line(recording, slot, MinimumLabel::with_stop), Paper::Fit::cut_middle);
  }
  return line;
}
