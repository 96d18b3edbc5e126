#include "views/frmdisplay.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/tool_tip.h"
#include "monitor/Frmwarn.h"
#include "views/date_segment.h"
#include "views/frmdate.h"
#include "views/sheet_model.h"
#include "views/statistics.h"

namespace {

// Sets the row where a channel begins in the information list in bold.
void emphasise(QTreeWidgetItem& item) {
  QFont font = item.font(1);
  font.setBold(true);
  for (const int column : {1, 2}) item.setFont(column, font);
}

}  // namespace

frmdisplay::frmdisplay(Shell& shell, QWidget* parent) : ChildWindow(parent), shell_(shell) {
  build();
}

void frmdisplay::Form_Load() {
  Recording& recording = User::recording;
  if (recording.SampleCount == 0) return;
  skip_on_error([&] { compute_statistics(recording); });
  fill_list();
  build_sheet();
  load_graph();
}

void frmdisplay::fill_list() {
  QList<QTreeWidgetItem*> items;
  for (const auto& [label, value] : information_rows(User::recording)) {
    items << new QTreeWidgetItem({QString(), label, value});
    items.back()->setToolTip(2, plain_tool_tip(value));
    if (label == QStringLiteral("Channel No.")) emphasise(*items.back());
  }
  lv1->clear();
  lv1->addTopLevelItems(items);
  lv1->resizeColumnToContents(1);
}

void frmdisplay::load_graph() {
  Recording& recording = User::recording;
  const auto channels = static_cast<std::size_t>(recording.clamped_channel_count());
  for (std::size_t c = 0; c < 4; ++c) {
    for (std::size_t k = 0; k < labels_per_scale; ++k) {
      Label4[labels_per_scale * c + k]->setVisible(c < channels);
    }
    Line1[c]->setVisible(c < channels);
    for (const std::size_t label : {c, c + 4, c + 8}) Label3[label]->setVisible(c < channels);
    if (c >= channels) continue;
    const QString title = recording.channel(c).name_and_unit();
    for (const std::size_t label : {c, c + 4}) {
      Label3[label]->setText(title);
      Label3[label]->setToolTip(plain_tool_tip(title));
    }
  }
  cursor_ = {};
  Label5->clear();
  hide_cursor();
  if (recording.SampleCount > 1) Slider1->setMaximum(recording.SampleCount - 1);
  recording.ViewCount = recording.SampleCount;
  RedrawGraph();
}

void frmdisplay::RedrawGraph() {
  stop_at_first_failure([this] { redraw(); });
}

void frmdisplay::redraw() {
  Recording& recording = User::recording;
  if (recording.SampleCount < 2) return;
  recording.ViewCount = std::min(recording.ViewCount, recording.SampleCount);
  ViewStart =
      view_start(Slider1->value(), Slider1->maximum(), recording.SampleCount, recording.ViewCount);
  ViewEnd = ViewStart + recording.ViewCount - 1;
  Slider1->setPageStep(std::max(1, recording.ViewCount));
  Label1->setText(recording.SampleTimes(ViewStart));
  Label2->setText(recording.SampleTimes(ViewEnd));
  GraphCurves& curves = Pic1->curves_to_fill();
  curves.copy_view(recording, ViewStart, recording.ViewCount);
  for (std::size_t c = 0; c < curves.channels.size(); ++c) {
    const bool drawn = stop_at_first_failure([&] { redraw_channel(curves, c); });
    if (!drawn) return show_no_curves(c);
  }
  arrange();
  show_at_cursor(cursor_sample(cursor_twips(), Pic1->twips_width(), recording.ViewCount));
}

void frmdisplay::redraw_channel(GraphCurves& curves, std::size_t slot) {
  std::optional<ScaleLimits> limits;
  if (User::DisplayLimitAuto[slot] != 1) {
    limits = {.up = User::DisplayLimit[2 * slot], .down = User::DisplayLimit[2 * slot + 1]};
  }
  auto& [values, high, low] = curves.channels[slot];
  const ChannelScale scale = channel_scale(values, limits);
  for (std::size_t k = 0; k < scale.labels.size(); ++k) {
    QLabel& label = *Label4[labels_per_scale * slot + k];
    label.setText(scale.labels[k]);
    // Inside the graph a text needs a background, but an empty label must not hide the grid.
    label.setAutoFillBackground(slot >= 2 && !scale.labels[k].isEmpty());
  }
  User::AxisHigh[slot] = high = scale.high;
  User::AxisLow[slot] = low = scale.low;
}

// Clears whatever could be mistaken for the current view: the curves, the values at the cursor, and
// the scales from `from_slot` on, the first slot without one.
void frmdisplay::show_no_curves(std::size_t from_slot) {
  Pic1->curves_to_fill().channels.clear();
  for (std::size_t i = labels_per_scale * from_slot; i < Label4.size(); ++i) {
    Label4[i]->clear();
    Label4[i]->setAutoFillBackground(false);
  }
  for (std::size_t i = 8; i < 12; ++i) Label3[i]->clear();
  hide_cursor();
}

void frmdisplay::cmd_Click(int index) {
  stop_at_first_failure([&] {
    Recording& recording = User::recording;
    const Zoom zoom = index == 1 ? Zoom::in : Zoom::out;
    const auto count = zoomed(zoom, recording.ViewCount, recording.SampleCount);
    if (!count) return;
    recording.ViewCount = *count;
    redraw();
  });
}

void frmdisplay::cmd2_Click() {
  const KeepAlive kept(*this);
  Frmwarn(shell_.messages(), shell_.window()).exec();
  if (!kept.unloaded()) RedrawGraph();
}

// A download that ends while the dialog is open brings a new window. The choice then applies to it.
void frmdisplay::Cmd6_Click() {
  const KeepAlive kept(*this);
  const auto show = [&shell = shell_](std::int32_t first) {
    if (frmdisplay* window = shell.loaded_display()) window->show_from(first);
  };
  frmdate(shell_.messages(), ViewStart, show, shell_.window()).exec();
}

void frmdisplay::show_from(std::int32_t first) {
  {
    // Otherwise setValue() would redraw once more.
    const QSignalBlocker quiet(Slider1);
    Slider1->setValue(first);
  }
  RedrawGraph();
}

void frmdisplay::Pic1_MouseDown(float x) {
  stop_at_first_failure([&] {
    const Recording& recording = User::recording;
    // An empty window has no sample to click on, whatever the closed Recording left behind.
    if (recording.SampleCount < 1) return;
    const std::int32_t count = recording.ViewCount;
    if (count == 1) return;
    cursor_ = {cursor_sample(x, Pic1->twips_width(), count), count};
    show_at_cursor(cursor_.sample);
  });
}

void frmdisplay::Pic1_KeyDown(CursorStep step) {
  stop_at_first_failure([&] {
    const Recording& recording = User::recording;
    const std::int32_t count = recording.ViewCount;
    const std::int32_t sample =
        ViewStart + cursor_sample(cursor_twips(), Pic1->twips_width(), count);
    move_cursor(stepped(step, sample, page_of(count), recording.clamped_sample_count()));
  });
}

// Moves the cursor to any sample of the Recording; the view follows only as far as it must. Does
// nothing while no cursor is shown.
void frmdisplay::move_cursor(std::int32_t sample) {
  if (!cursor_shown_) return;
  const std::int32_t count = User::recording.ViewCount;
  if (count == 1) return;
  sample = std::clamp(sample, 0, User::recording.clamped_sample_count() - 1);
  std::int32_t first = ViewStart;
  if (sample < ViewStart) first = sample;
  if (sample > ViewEnd) first = sample - count + 1;
  // Set before the redraw, which then shows this sample and none in between.
  cursor_ = {sample - first, count};
  first == ViewStart ? show_at_cursor(cursor_.sample) : show_from(first);
}

float frmdisplay::cursor_twips() const {
  return cursor_x(cursor_.sample, Pic1->twips_width(), cursor_.view_count);
}

void frmdisplay::show_at_cursor(std::int32_t sample) {
  const Recording& recording = User::recording;
  const std::int64_t at = std::int64_t{ViewStart} + sample;
  QStringList texts = {recording.SampleTimes(at)};
  for (int c = 0; c < recording.clamped_channel_count(); ++c) {
    const auto slot = static_cast<std::size_t>(c);
    const QString value = general_number(recording.SampleValues(at, c));
    Label3[slot + 8]->setText(value);
    texts << Label3[slot + 4]->text() + u' ' + value;
  }
  Label5->setText(texts.constFirst());
  cursor_shown_ = true;
  Pic1->show_value({.text = texts.join(QStringLiteral("; ")),
                    .sample = static_cast<int>(at) + 1,
                    .samples = recording.clamped_sample_count()});
  place_cursor();
  select_in_sheet(static_cast<std::int32_t>(at));
}

void frmdisplay::hide_cursor() {
  cursor_shown_ = false;
  Pic1->show_value({});
  place_cursor();
}

// In a newly loaded window the first row is current, but nothing is selected in the sheet until the
// cursor moves.
void frmdisplay::select_in_sheet(std::int32_t sample) {
  QItemSelectionModel* selection = MSFlG1->selectionModel();
  if (!selection) return;
  const QModelIndex now = selection->currentIndex();
  if (now.isValid() && now.row() == sample) return;
  const QModelIndex row = MSFlG1->model()->index(sample, std::max(0, now.column()));
  selecting_ = true;
  selection->setCurrentIndex(
      row, now.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                         : QItemSelectionModel::NoUpdate);
  selecting_ = false;
}
