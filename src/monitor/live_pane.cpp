#include "monitor/live_pane.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

#include "app/shell.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/contrast.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "base/program_folder.h"
#include "base/slider_keys.h"
#include "base/spoken.h"
#include "base/times.h"
#include "device/status.h"
#include "monitor/automatic_save.h"
#include "monitor/recorder_session.h"
#include "monitor/setup_pane.h"

namespace {

constexpr Retries live_retries = {.pause_ms = 10};
constexpr int time_column_twips = 2000;

// The designed width, or more if the locale's times need it.
int time_column_width(const QTableView& sheet, const QString& time) {
  const int needed = sheet.fontMetrics().horizontalAdvance(time) + sheet.fontMetrics().height();
  return std::max(time_column_twips / twips_per_pixel, needed);
}

}  // namespace

LivePane::LivePane(Shell& shell, ChildWindow& window, const SetupPane& setup)
    : QWidget(&window), shell_(shell), window_(window), setup_(setup) {
  constexpr int design_interval_ms = 5000;
  Timer1 = new IntervalTimer(design_interval_ms, this);
  build();
  connect(Timer1, &IntervalTimer::tick, this, &LivePane::Timer1_Timer);
}

// Skips the tick while another task has the recorder, so that cycles do not pile up.
void LivePane::Timer1_Timer() {
  const RecorderSession session(window_, shell_, RecorderTask::poll);
  if (!session.granted()) return;
  const bool polls = Timer1->enabled();
  const auto answer = session.request(Packet::BuildStatusRequest, live_retries);
  if (session.ended()) return;
  if (answer) {
    show_reading(decode_status(*answer).readings);
  } else {
    monitor_.count_missed();
  }
  show_stale();
  // A command that switched polling off during the wait has also emptied the panel.
  if (polls && !Timer1->enabled()) return;
  shell_.set_panel(2,
                   monitor_.link_ok() ? QStringLiteral("Link Ok") : QStringLiteral("Link Error"));
}

void LivePane::show_reading(const LiveReading& reading) {
  // The user may have chosen another recorder type since the window opened.
  if (live_channels(User::DeviceTable, User::RecorderType) != monitor_.channels()) lay_out();
  const QString time = general_date_time_text(shell_.clock().now());
  monitor_.add(time, reading, typed_limits());
  if (monitor_.save_due()) save_automatically();
  RedrawGraph();
  show_readings();
  monitor_.count_answered();
}

// Marks the values as old while the panel says "Link Error".
void LivePane::show_stale() {
  const int count = monitor_.buffer.LiveCount();
  const bool stale = !monitor_.link_ok() && count > 0;
  if (stale) {
    stale_label->setText(QStringLiteral("The recorder does not answer. The values are those of %1.")
                             .arg(monitor_.buffer.LiveTimes(count - 1)));
  }
  stale_label->setVisible(stale);
  for (std::size_t c = 0; c < 4; ++c) {
    Label4[labels_per_channel * c + value_label]->setEnabled(!stale);
  }
}

void LivePane::tell_alarm() {
  QApplication::alert(window());
  if (!alarms_in_sight()) mark_alarms(true);
}

// Whether the alarm sheet's newest row is visible and the program's window is active.
bool LivePane::alarms_in_sight() const {
  const QAbstractItemModel& sheet = *MSFlG2->model();
  const QRect newest = MSFlG2->visualRect(sheet.index(sheet.rowCount() - 1, 0));
  return isActiveWindow() && MSFlG2->viewport()->visibleRegion().intersects(newest);
}

void LivePane::mark_alarms(bool unseen) {
  const int tab = SSTab3->indexOf(MSFlG2);
  if (SSTab3->tabIcon(tab).isNull() != unseen) return;
  SSTab3->setTabIcon(tab, unseen ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
  SSTab3->setTabToolTip(tab, unseen ? QStringLiteral("New alarms") : QString());
  SSTab3->setAccessibleDescription(SSTab3->tabToolTip(tab));
}

bool LivePane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == Slider1)
    return step_slider(*Slider1, *event, Slider1->value(), Slider1->pageStep());
  if (event->type() == QEvent::Paint && alarms_in_sight()) mark_alarms(false);
  return QWidget::eventFilter(watched, event);
}

void LivePane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && alarms_in_sight()) mark_alarms(false);
  if (event->type() != QEvent::PaletteChange) return;
  for (QLabel* label : findChildren<QLabel*>()) {
    if (label->font().bold()) colour_alarm(*label);
  }
}

std::array<AlarmLimits, 4> LivePane::typed_limits() const {
  std::array<AlarmLimits, 4> limits;
  for (std::size_t c = 0; c < limits.size(); ++c) {
    const LimitTexts texts = setup_.limits(c);
    limits[c] = alarm_limits(texts.up, texts.down);
  }
  return limits;
}

// Writes to the user's documents if the program's own folder does not take the file (the disk is
// full, say, or all users share the folder). The window shows the path, or that nothing was saved.
void LivePane::save_automatically() {
  monitor_.SaveCounter = 0;
  const QString name = automatic_save_name(shell_.clock().now());
  const QString& recorder_name = User::DeviceTable.type_name(User::RecorderType);
  const AutomaticSaveHeader header = {setup_.title(), recorder_name, monitor_.channels()};
  for (QString (*const folder)() : {program_folder, documents_folder}) {
    const QString path = folder() + u'/' + name;
    if (stop_at_first_failure([&] { save_live_buffer(path, header, monitor_.buffer); })) {
      return tell_saved(QStringLiteral("Saved automatically: ") + path, false);
    }
  }
  tell_saved(QStringLiteral("Not saved automatically: %1 cannot be written").arg(name), true);
}

void LivePane::tell_saved(const QString& text, bool failed) {
  show_spoken(*saved_label, text);
  saved_label->setVisible(true);
  show_alarm(*saved_label, failed);
}

void LivePane::lay_out() {
  monitor_.set_channels(live_channels(User::DeviceTable, User::RecorderType));
  for (int c = 0; c < 4; ++c) {
    const auto channel = static_cast<std::size_t>(c);
    const bool present = c < monitor_.channels().count;
    for (int which = 0; which < labels_per_channel; ++which) {
      Label4[static_cast<std::size_t>(labels_per_channel * c + which)]->setVisible(present);
    }
    Line1[channel]->setVisible(present);
    Label3[channel]->setVisible(present);
    Label3[channel]->setText(monitor_.channels().names[channel] + u' ' +
                             monitor_.channels().units[channel]);
  }
  const QString time = general_date_time_text(shell_.clock().now());
  for (QTableView* sheet : {MSFlG1, MSFlG2}) {
    sheet->setColumnWidth(1, time_column_width(*sheet, time));
  }
  show_readings();
  RedrawGraph();
}

void LivePane::clear_sheet() {
  monitor_.live_sheet.clear();
  lay_out();
}

void LivePane::show_readings() {
  for (int c = 0; c < monitor_.channels().count; ++c) {
    const auto channel = static_cast<std::size_t>(c);
    const ChannelStatus& status = monitor_.status[channel];
    const LimitTexts limits = setup_.limits(channel);
    const ChannelLabels texts =
        channel_labels(c, monitor_.channels(), status, limits.up, limits.down);
    for (std::size_t which = 0; which < texts.size(); ++which) {
      Label4[labels_per_channel * channel + which]->setText(texts[which]);
    }
    const auto label = [&](ChannelLabel which) -> QLabel& {
      return *Label4[labels_per_channel * channel + which];
    };
    QLabel& value = label(value_label);
    if (status.alarmed() && !value.font().bold()) {
      announce(*this, texts[name_label] + QStringLiteral(" Out Of Range ") + value.text());
    }
    show_alarm(value, status.alarmed());
    show_alarm(label(up_limit_label), !float_of(limits.up));
    show_alarm(label(down_limit_label), !float_of(limits.down));
  }
}

// Shows an alarm in red, and in bold for users who cannot see red.
void LivePane::show_alarm(QLabel& label, bool alarmed) {
  QFont font = label.font();
  if (font.bold() == alarmed) return;
  font.setBold(alarmed);
  label.setFont(font);
  if (alarmed) return colour_alarm(label);
  label.setPalette({});
}

void LivePane::colour_alarm(QLabel& label) {
  QPalette palette;
  const std::array behind = {palette.color(QPalette::Window)};
  const QColor text = palette.color(QPalette::WindowText);
  const QColor red = readable_colour(QColor(216, 0, 0), text, behind);
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    palette.setColor(group, QPalette::WindowText, red);
  }
  label.setPalette(palette);
}
