#include "print/sheet_page.h"

#include <QPainter>

#include <algorithm>
#include <array>

#include "base/errors.h"
#include "base/numbers.h"
#include "print/paper.h"
#include "print/sheet_pages.h"

namespace {

constexpr double title_points = 10.5;
constexpr double thin_line = 6;
constexpr double thick_line = 12;
constexpr double smallest_head = 2.0 / 3.0;

using Align = Paper::Align;
using Fit = Paper::Fit;

// What every part of a page is drawn with.
struct Sheet {
  const Paper& paper;
  const PrintedView& view;
  const SheetPages& pages;
  int page;

  double width() const { return pages.right() - pages.left(); }
};

// The box of a line of text, `height` high, from `right - room` to `right`; in twips.
struct Cell {
  double right;
  double room;
  double top;
  double height;
};

void draw_cell(const Sheet& sheet, const Cell& cell, const QString& text, const Paper::Line& line) {
  const double x = line.align == Align::left ? cell.right - cell.room : cell.right;
  Paper::Line fitted = line;
  fitted.room = cell.room;
  sheet.paper.text({x, cell.top + (cell.height - sheet.paper.height_of(line.style.points)) / 2},
                   text, fitted);
}

void draw_number(const Sheet& sheet, const Cell& cell, const QString& text) {
  draw_cell(sheet, cell, text, {{sheet_points}, 0, Align::right, Fit::shrink});
}

// "2026-03-01 08:00:00 to 2026-03-22 04:00:00"; empty without samples.
QString span_text(const PrintedView& view) {
  const int samples = printed_samples(view);
  if (samples == 0) return {};
  return view.recording.SampleTimes(view.start) + QStringLiteral(" to ") +
         view.recording.SampleTimes(view.start + samples - 1);
}

// Drawn on every page, so that a single page shows where it belongs.
void draw_head(const Sheet& sheet) {
  const double left = sheet.pages.left();
  const double right = sheet.pages.right();
  const auto line = [&](double mm, const QString& text, const QString& end, TextStyle style) {
    const double top = sheet_twips(mm);
    const double end_room = text_width(end, {style.points});
    sheet.paper.text({right, top}, end, {{style.points}, sheet.width(), Align::right, Fit::shrink});
    const double room = sheet.width() - end_room - sheet_twips(sheet_mm.group_gap);
    sheet.paper.text({left, top}, text, {style, room});
  };
  const QString page = QStringLiteral("Page %1 of %2").arg(sheet.page + 1).arg(sheet.pages.count());
  line(sheet_mm.title_top, sheet.view.recording.Title, page, {title_points, true});
  line(sheet_mm.recorder_top, sheet.view.recording.RecorderName, span_text(sheet.view),
       {sheet_points});
  const double y = sheet_twips(sheet_mm.head_rule);
  sheet.paper.rule({left, y}, {right, y}, Qt::black, thin_line);
}

QString statistics_title(const PrintedView& view) {
  const int all = view.recording.clamped_sample_count();
  const int printed = printed_samples(view);
  QString title = QStringLiteral("Statistics of the whole recording (%1 samples)").arg(all);
  if (printed != all) {
    title += QStringLiteral(", not of the printed view (%1 samples)").arg(printed);
  }
  return title;
}

// One row per channel: number, name, unit and the statistics.
void draw_statistics(const Sheet& sheet, double top) {
  constexpr std::array after_name = {"Unit", "Max.", "Min.", "Average"};
  constexpr double column_mm = 25;
  constexpr double number_mm = 10;
  const double column = sheet_twips(column_mm);
  const double gap = sheet_twips(sheet_mm.cell_gap);
  const double name_right = sheet.pages.right() - column * after_name.size();
  const double name_left = sheet.pages.left() + sheet_twips(number_mm);
  const auto row = [&](double y, double height, const std::array<QString, 6>& texts) {
    const Paper::Line words = {{sheet_points}, 0, Align::left, Fit::cut};
    draw_cell(sheet, {name_left, name_left - sheet.pages.left(), y, height}, texts[0], words);
    draw_cell(sheet, {name_right, name_right - name_left, y, height}, texts[1], words);
    for (std::size_t i = 2; i < texts.size(); ++i) {
      const double right = name_right + column * static_cast<double>(i - 1);
      const Cell cell = {right, column - gap, y, height};
      if (i == 2) {
        draw_cell(sheet, cell, texts[i], words);
      } else {
        draw_number(sheet, cell, texts[i]);
      }
    }
  };
  row(top, sheet_twips(sheet_mm.head_row),
      {QStringLiteral("No."), QStringLiteral("Channel Name"), after_name[0], after_name[1],
       after_name[2], after_name[3]});
  top += sheet_twips(sheet_mm.head_row);
  sheet.paper.rule({sheet.pages.left(), top}, {sheet.pages.right(), top}, Qt::black, thin_line);
  const auto& stats = sheet.view.recording.ChannelStats;
  for (const int slot : printed_slots(sheet.view)) {
    const auto c = static_cast<std::size_t>(slot);
    const ChannelTexts<const QString> channel = sheet.view.recording.channel(c);
    row(top, sheet_twips(sheet_mm.row),
        {channel.number, channel.name, channel.unit, fixed2(stats[0][c]), fixed2(stats[1][c]),
         fixed2(stats[2][c])});
    top += sheet_twips(sheet_mm.row);
  }
}

void draw_information(const Sheet& sheet) {
  const Recording& recording = sheet.view.recording;
  double top = sheet_twips(sheet_mm.body_top);
  const auto line = [&](const QString& text) {
    sheet.paper.text({sheet.pages.left(), top}, text, {{sheet_points}, sheet.width()});
    top += sheet_twips(sheet_mm.line);
  };
  line(QStringLiteral("Channels:%1    Length:%2    Printed:%3")
           .arg(recording.ChannelCount)
           .arg(recording.ViewCount)
           .arg(sheet.view.printed));
  line(statistics_title(sheet.view));
  draw_statistics(sheet, top);
}

// A column's heading, made to fit: the name is cut, not the unit.
QString head_text(const Recording& recording, std::size_t c, double room, TextStyle& style) {
  const QString& name = recording.channel(c).name;
  QString heading = recording.channel(c).heading();
  const QString unit = heading.mid(name.size());
  const double width = text_width(heading, style);
  if (width <= room) return heading;
  style.points *= std::max(room / width, smallest_head);
  return cut_text(name, style, room - text_width(unit, style)) + unit;
}

// One of the groups of columns that lie side by side.
class Group {
 public:
  Group(const Sheet& sheet, int number)
      : sheet_(sheet),
        slots_(printed_slots(sheet.view)),
        left_(sheet.pages.left() + number * sheet.pages.group_step()),
        top_(sheet.pages.table_top(sheet.page)) {}

  // Draws `rows` of the view, from the top down.
  void draw(SheetRows rows) const {
    sheet_.paper.painter().setPen(Qt::black);
    draw_heads();
    for (int row = 0; row < rows.count; ++row) {
      draw_row(sheet_.view.start + rows.first + row, row_top(row));
    }
    draw_rules(rows.count);
  }

 private:
  double row_top(int row) const {
    return top_ + sheet_twips(sheet_mm.head_row) + row * sheet_twips(sheet_mm.row);
  }

  Cell cell(std::size_t column, double top, double height_mm) const {
    const auto& edges = sheet_.pages.column_edges();
    const double from = column == 0 ? 0 : edges[column - 1] + sheet_twips(sheet_mm.cell_gap);
    return {left_ + edges[column], edges[column] - from, top, sheet_twips(height_mm)};
  }

  void draw_heads() const {
    const auto head = [&](std::size_t column) { return cell(column, top_, sheet_mm.head_row); };
    draw_number(sheet_, head(0), QStringLiteral("Number"));
    draw_number(sheet_, head(1), QStringLiteral("Time"));
    for (std::size_t i = 0; i < slots_.size(); ++i) {
      TextStyle style = {sheet_points};
      const Cell place = head(i + 2);
      const QString text =
          head_text(sheet_.view.recording, static_cast<std::size_t>(slots_[i]), place.room, style);
      draw_cell(sheet_, place, text, {style, 0, Align::right, Fit::shrink});
    }
  }

  void draw_row(int sample, double top) const {
    const Recording& recording = sheet_.view.recording;
    const auto number = [&](std::size_t column, const QString& text) {
      draw_number(sheet_, cell(column, top, sheet_mm.row), text);
    };
    number(0, QString::number(sample + 1));
    number(1, recording.SampleTimes(sample));
    for (std::size_t i = 0; i < slots_.size(); ++i) {
      number(i + 2, fixed2(recording.SampleValues(sample, slots_[i])));
    }
  }

  void draw_rules(int rows) const {
    const auto rule = [&](double y, QColor colour, double width) {
      const double right = left_ + sheet_.pages.column_edges().back();
      sheet_.paper.rule({left_, y}, {right, y}, colour, width);
    };
    for (int row = 1; row < rows; ++row) rule(row_top(row), QColor(220, 220, 220), thin_line);
    rule(top_, Qt::black, thick_line);
    rule(row_top(0), Qt::black, thick_line);
    rule(row_top(rows), Qt::black, thick_line);
  }

  const Sheet& sheet_;
  std::vector<int> slots_;
  double left_;
  double top_;
};

void draw_table(const Sheet& sheet) {
  const SheetRows all = sheet.pages.rows(sheet.page);
  const int in_group = sheet.pages.rows_in_group(sheet.page);
  for (int group = 0; group == 0 || group * in_group < all.count; ++group) {
    const int before = group * in_group;
    Group(sheet, group).draw({all.first + before, std::min(in_group, all.count - before)});
  }
}

}  // namespace

void draw_sheet_page(QPainter& painter, QSizeF size, const PrintedView& view, int page) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::black);
  const Paper paper(painter);
  const SheetPages pages(view, size);
  const Sheet sheet = {paper, view, pages, page};
  stop_at_first_failure([&] {
    draw_head(sheet);
    painter.setPen(Qt::black);
    if (page == 0) draw_information(sheet);
    draw_table(sheet);
  });
  painter.restore();
}
