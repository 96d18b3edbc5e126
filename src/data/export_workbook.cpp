#include "data/export_workbook.h"

#include <QScopeGuard>
#include <QStringList>

#include <algorithm>
#include <utility>

#include "app/recording.h"
#include "base/numbers.h"
#include "base/times.h"
#include "data/automation.h"
#include "data/export_lines.h"
#include "data/export_office.h"
#include "data/export_progress.h"

namespace {

const QString sheet_with_time = QStringLiteral("Readings");
const QString sheet_with_date_and_time = QStringLiteral("Date and Time");
// Asks for a workbook with one sheet, whatever the application's usual number.
constexpr double one_worksheet = -4167;
// The place of that sheet after two sheets have been added in front of it.
constexpr double own_sheet = 3;
// A time stamp is a date of ten characters, a blank and the time.
constexpr qsizetype date_size = 10;
constexpr double number_width = 10;
constexpr double time_width = 25;
constexpr double date_width = 15;
constexpr double least_channel_width = 12;
// Where the columns of the channels begin, counted from 1.
constexpr int first_channel_with_time = 3;
constexpr int first_channel_with_date_and_time = 4;
// Width of the columns that fit on a portrait page with the usual margins, in characters.
constexpr double upright_page_width = 85;
constexpr double landscape = 2;
// Resolves a conflict with other users' changes in favour of ours.
constexpr double keep_own_changes = 2;

// The cell holds the two decimals that it shows, not the many digits of the 32-bit float.
AutomationCell value_cell(float value) {
  const QString shown = fixed2(static_cast<double>(value));
  const auto number = number_of(shown);
  return number ? AutomationCell(*number) : AutomationCell(shown);
}

// A date is a number of days, a time a fraction of a day. A stamp in another form stays text, and
// so does one before March 1900, because applications number those days differently.
std::pair<AutomationCell, AutomationCell> date_and_time_cells(const QString& stamp) {
  static const QDate day_0(1899, 12, 30);
  static const QDate first_agreed(1900, 3, 1);
  constexpr double day_ms = 86'400'000;
  const QDateTime time = stamp_time(stamp);
  if (!time.isValid() || time.date() < first_agreed) {
    return {stamp.left(date_size), stamp.mid(date_size + 1)};
  }
  return {static_cast<double>(day_0.daysTo(time.date())),
          time.time().msecsSinceStartOfDay() / day_ms};
}

class WorkbookExport {
 public:
  WorkbookExport(AutomationObject& workbook, const Recording& recording, ExportProgress& progress)
      : workbook_(workbook), recording_(recording), progress_(progress) {}

  void fill() {
    add_sheets();
    format_columns();
    progress_.reach(2);
    write_heads();
    progress_.reach(3);
    write_samples();
  }

 private:
  void add_sheets();
  void format_columns();
  double format_channels(AutomationObject& sheet, int first_column);
  void write_heads();
  void write_samples();
  void write_rows(int first, int count);

  int channels() const { return recording_.clamped_channel_count(); }

  AutomationObject& workbook_;
  const Recording& recording_;
  ExportProgress& progress_;
  // Has the date and the time in separate columns.
  AutomationPointer first_added_;
  // Has the Recording's information and whole time stamps.
  AutomationPointer second_added_;
};

void WorkbookExport::add_sheets() {
  const AutomationPointer sheets = workbook_.get("Worksheets");
  first_added_ = sheets->call("Add");
  second_added_ = sheets->call("Add");
  if (!first_added_ || !second_added_) throw AutomationError("no sheet was added");
  first_added_->put("Name", sheet_with_date_and_time);
  second_added_->put("Name", sheet_with_time);
  workbook_.get("Worksheets", {own_sheet})->call("Delete");
}

void WorkbookExport::format_columns() {
  second_added_->get("Columns", {1.0})->put("ColumnWidth", number_width);
  second_added_->get("Columns", {2.0})->put("ColumnWidth", time_width);
  double width = number_width + time_width;
  width += format_channels(*second_added_, first_channel_with_time);
  first_added_->get("Columns", {2.0})->put("ColumnWidth", date_width);
  first_added_->get("Columns", {2.0})->put("NumberFormat", QStringLiteral("yyyy-mm-dd"));
  first_added_->get("Columns", {3.0})->put("NumberFormat", QStringLiteral("hh:mm:ss"));
  format_channels(*first_added_, first_channel_with_date_and_time);
  if (width <= upright_page_width) return;
  // An application without a printer refuses this, but then it prints no pages either.
  for (const auto& sheet : {first_added_, second_added_}) {
    skip_on_error([&] { sheet->get("PageSetup")->put("Orientation", landscape); });
  }
}

// Returns the total width of the channels' columns.
double WorkbookExport::format_channels(AutomationObject& sheet, int first_column) {
  double sum = 0;
  for (int slot = 0; slot < channels(); ++slot) {
    const auto head = static_cast<double>(column_head(recording_, slot).size());
    const AutomationPointer column =
        sheet.get("Columns", {static_cast<double>(first_column + slot)});
    // Wide enough for its head, within the application's limit.
    const double width = std::clamp(head + 2, least_channel_width, 100.0);
    column->put("ColumnWidth", width);
    column->put("NumberFormatLocal", QStringLiteral("0.00_ "));
    sum += width;
  }
  return sum;
}

void WorkbookExport::write_heads() {
  const auto write = [](AutomationObject& sheet, int row, int column, const QString& text) {
    sheet.put("Cells", {static_cast<double>(row), static_cast<double>(column)}, text);
  };
  write(*first_added_, 1, 1, QStringLiteral("Number"));
  write(*first_added_, 1, 2, QStringLiteral("Date"));
  write(*first_added_, 1, 3, QStringLiteral("Time"));
  int row = 0;
  for (const QString& line : information_lines(recording_, MinimumLabel::with_stop)) {
    write(*second_added_, ++row, 1, line);
  }
  row += 2;
  write(*second_added_, row, 1, QStringLiteral("Number"));
  write(*second_added_, row, 2, QStringLiteral("Time"));
  for (int slot = 0; slot < channels(); ++slot) {
    const QString head = column_head(recording_, slot);
    write(*first_added_, 1, first_channel_with_date_and_time + slot, head);
    write(*second_added_, row, first_channel_with_time + slot, head);
  }
}

void WorkbookExport::write_samples() {
  const int total = recording_.SampleCount;
  for (int first = 0; first < total; first += samples_per_call) {
    const int count = std::min(samples_per_call, total - first);
    write_rows(first, count);
    progress_.reach_sample(3, first + count, total);
  }
}

// Writes `count` samples from sample `first` on as one block on each sheet.
void WorkbookExport::write_rows(int first, int count) {
  AutomationTable with_time;
  AutomationTable with_date_and_time;
  with_time.columns = static_cast<std::size_t>(first_channel_with_time - 1 + channels());
  with_date_and_time.columns = with_time.columns + 1;
  for (int n = first; n < first + count; ++n) {
    const QString& time = recording_.SampleTimes(n);
    with_time.cells.insert(with_time.cells.end(), {n + 1.0, time});
    const auto [date, time_of_day] = date_and_time_cells(time);
    with_date_and_time.cells.insert(with_date_and_time.cells.end(), {n + 1.0, date, time_of_day});
    for (int slot = 0; slot < channels(); ++slot) {
      const AutomationCell cell = value_cell(recording_.SampleValues(n, slot));
      with_time.cells.push_back(cell);
      with_date_and_time.cells.push_back(cell);
    }
  }
  const auto write = [count](AutomationObject& sheet, int row, AutomationTable&& table) {
    const auto columns = static_cast<double>(table.columns);
    sheet.get("Cells", {static_cast<double>(row), 1.0})
        ->get("Resize", {static_cast<double>(count), columns})
        ->put("Value", std::move(table));
  };
  write(*second_added_, channels() + 8 + first, std::move(with_time));
  write(*first_added_, 2 + first, std::move(with_date_and_time));
}

}  // namespace

void export_workbook(Automation& office, const Recording& recording, const QString& path,
                     ExportProgress& progress) {
  const OfficeApplication spreadsheet = running_or_new(office, "Excel.Application", progress);
  progress.reach(1);
  const AutomationPointer workbook = spreadsheet->get("Workbooks")->call("Add", {one_worksheet});
  if (!workbook) throw AutomationError("no workbook was added");
  // The application keeps running and must not keep the invisible workbook open.
  auto undo = qScopeGuard([&] {
    skip_on_error([&] { workbook->call("close", {}, {{"SaveChanges", 0.0}}); });
  });
  WorkbookExport(*workbook, recording, progress).fill();
  workbook->call("SaveAs", {}, {{"filename", path}, {"ConflictResolution", keep_own_changes}});
  undo.dismiss();
  workbook->call("close");
}
