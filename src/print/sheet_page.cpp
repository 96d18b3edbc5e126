#include "print/sheet_page.h"

#include <QPainter>

#include <algorithm>

#include "base/errors.h"
#include "base/numbers.h"
#include "print/page.h"

namespace {

// In millimetres as they are on the paper, whichever way it is turned.
constexpr double row_mm = 5;
constexpr double head_mm = 6;
constexpr double margin_top_mm = 15;
constexpr double margin_bottom_mm = 20;
constexpr double foot_mm = 14;
constexpr double margin_side_mm = 20;
constexpr double number_mm = 16;
constexpr double time_mm = 42;
constexpr double value_mm = 30;
constexpr double cell_gap_mm = 2;

constexpr double points = 9;

constexpr double twips(double mm) {
  return mm * twips_per_mm;
}

int rows_between(double top, double bottom) {
  return std::max(1, static_cast<int>((bottom - top - twips(head_mm)) / twips(row_mm)));
}

double table_bottom(QSizeF size) {
  return size.height() - twips(margin_bottom_mm);
}

// Under the header on the first page, at the top margin on the others.
double table_top(const Page& page, const PrintedView& view, int number) {
  if (number > 0) return twips(margin_top_mm);
  const auto lines = 5 + static_cast<int>(printed_slots(view).size());
  return page.down(header_line_mm(lines + 1)) + twips(row_mm);
}

struct Column {
  double left;
  double right;
};

// The number's, the time's and a column a channel, from left to right.
std::vector<Column> columns_of(QSizeF size, std::size_t channels) {
  const double wanted = twips(number_mm + time_mm + value_mm * static_cast<double>(channels));
  const double widest = std::max(1.0, size.width() / a4_portrait.width());
  const double stretch = std::min(widest, (size.width() - twips(2 * margin_side_mm)) / wanted);
  std::vector<Column> columns;
  double left = twips(margin_side_mm);
  const auto add = [&](double mm) {
    columns.push_back({left, left + twips(mm) * stretch});
    left = columns.back().right;
  };
  add(number_mm);
  add(time_mm);
  for (std::size_t i = 0; i < channels; ++i) add(value_mm);
  return columns;
}

class Table {
 public:
  Table(const Page& page, const PrintedView& view, double top)
      : page_(page),
        view_(view),
        slots_(printed_slots(view)),
        columns_(columns_of(page.size(), slots_.size())),
        top_(top) {}

  void draw(SheetRows rows) const {
    page_.painter().setPen(Qt::black);
    draw_head();
    for (int row = 0; row < rows.count; ++row) {
      draw_row(view_.start + rows.first + row, row_top(row));
    }
    draw_lines(rows.count);
  }

 private:
  double row_top(int row) const { return top_ + twips(head_mm) + row * twips(row_mm); }

  void cell(std::size_t column, double top, double height, const QString& text) const {
    const double gap = twips(cell_gap_mm);
    const Column& place = columns_[column];
    page_.text({place.right - gap, top + (height - Page::line_height(points)) / 2}, text, points,
               place.right - place.left - gap, Page::Align::right);
  }

  void draw_head() const {
    const auto& info = view_.recording.ChannelInfo;
    cell(0, top_, twips(head_mm), QStringLiteral("Number"));
    cell(1, top_, twips(head_mm), QStringLiteral("Time"));
    for (std::size_t i = 0; i < slots_.size(); ++i) {
      const auto c = static_cast<std::size_t>(slots_[i]);
      cell(i + 2, top_, twips(head_mm), info[1][c] + u'(' + info[2][c] + u')');
    }
  }

  void draw_row(int sample, double top) const {
    cell(0, top, twips(row_mm), QString::number(sample + 1));
    cell(1, top, twips(row_mm), view_.recording.SampleTimes(sample));
    for (std::size_t i = 0; i < slots_.size(); ++i) {
      cell(i + 2, top, twips(row_mm), fixed2(view_.recording.SampleValues(sample, slots_[i])));
    }
  }

  void draw_lines(int rows) const {
    const auto line = [&](double y, QColor colour, double width) {
      page_.rule({columns_.front().left, y}, {columns_.back().right, y}, colour, width);
    };
    for (int row = 1; row < rows; ++row) line(row_top(row), QColor(220, 220, 220), 6);
    line(top_, Qt::black, 12);
    line(row_top(0), Qt::black, 12);
    line(row_top(rows), Qt::black, 12);
  }

  const Page& page_;
  const PrintedView& view_;
  std::vector<int> slots_;
  std::vector<Column> columns_;
  double top_;
};

void draw_foot(const Page& page, int number, int count) {
  page.painter().setPen(Qt::black);
  page.text({page.size().width() / 2, page.size().height() - twips(foot_mm)},
            QStringLiteral("%1 / %2").arg(number + 1).arg(count), points, page.size().width(),
            Page::Align::centre);
}

}  // namespace

SheetPages::SheetPages(const PrintedView& view, QSizeF size) {
  const std::int64_t end = std::min<std::int64_t>(
      std::int64_t{view.start} + view.recording.ViewCount, view.recording.held_samples());
  samples_ = static_cast<int>(std::max<std::int64_t>(0, end - view.start));
  QPainter none;
  const Page page(none, size);
  rows_on_first_ = rows_between(table_top(page, view, 0), table_bottom(size));
  rows_on_others_ = rows_between(table_top(page, view, 1), table_bottom(size));
}

int SheetPages::count() const {
  const int others = std::max(0, samples_ - rows_on_first_);
  return 1 + (others + rows_on_others_ - 1) / rows_on_others_;
}

SheetRows SheetPages::rows(int page) const {
  const int first = page == 0 ? 0 : rows_on_first_ + (page - 1) * rows_on_others_;
  const int room = page == 0 ? rows_on_first_ : rows_on_others_;
  return {first, std::clamp(samples_ - first, 0, room)};
}

void draw_sheet_page(QPainter& painter, QSizeF size, const PrintedView& view, int page) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::black);
  const Page paper(painter, size);
  const SheetPages pages(view, size);
  stop_at_first_failure([&] {
    if (page == 0) draw_header(paper, view);
    Table(paper, view, table_top(paper, view, page)).draw(pages.rows(page));
    draw_foot(paper, page, pages.count());
  });
  painter.restore();
}
