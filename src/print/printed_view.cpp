#include "print/printed_view.h"

#include "data/export_lines.h"
#include "print/page.h"

namespace {

constexpr double header_points = 10.5;
constexpr double left_mm = 31.7;
constexpr double right_margin_mm = 10;

}  // namespace

std::vector<int> printed_slots(const PrintedView& view) {
  std::vector<int> slots_to_print;
  for (int slot = 0; slot < view.recording.held_channels(); ++slot) {
    if (view.chosen[static_cast<std::size_t>(slot)]) slots_to_print.push_back(slot);
  }
  return slots_to_print;
}

int draw_header(const Page& page, const PrintedView& view) {
  const Recording& recording = view.recording;
  const double left = page.across(left_mm);
  const double room = page.size().width() - left - page.across(right_margin_mm);
  int line = 0;
  const auto add = [&](const QString& text) {
    ++line;
    page.text({left, page.down(header_line_mm(line))}, text, header_points, room);
  };
  add(QStringLiteral("Title：") + recording.Title);
  add(QStringLiteral("Channels:") + QString::number(recording.ChannelCount));
  add(QStringLiteral("Length:") + QString::number(recording.ViewCount));
  add(QStringLiteral("Start Time：") + recording.SampleTimes(view.start));
  const std::int64_t end = std::int64_t{view.start} + recording.ViewCount - 1;
  add(QStringLiteral("End Time：") + recording.SampleTimes(end));
  for (const int slot : printed_slots(view)) {
    add(channel_line(recording, slot, MinimumLabel::with_stop));
  }
  return line;
}
