// Live monitoring: the polling cycle, the sheets and the channels' labels.
#include "app/shell.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/contrast.h"
#include "base/errors.h"
#include "base/program_folder.h"
#include "base/spoken.h"
#include "base/times.h"
#include "device/status.h"
#include "monitor/automatic_save.h"
#include "monitor/recorder_session.h"

namespace {

constexpr Retries live_retries = {.pause_ms = 10};
constexpr int time_column_twips = 2000;

// Wider than laid out where the locale's times need it.
int time_column_width(const QTableView& sheet, const QString& time) {
  const int needed = sheet.fontMetrics().horizontalAdvance(time) + sheet.fontMetrics().height();
  return std::max(time_column_twips / twips_per_pixel, needed);
}

}  // namespace

// A tick while another task has the recorder is left out: cycles do not pile up.
void frmrealtime::Timer1_Timer() {
  const Session session(*this, RecorderTask::poll);
  if (!session.granted()) return;
  const auto answer = session.request(Packet::BuildStatusRequest, live_retries);
  if (session.ended()) return;
  if (answer) {
    take_reading(decode_status(*answer).readings);
  } else {
    live_.count_missed();
  }
  shell_.set_panel(2, live_.link_ok() ? QStringLiteral("Link Ok") : QStringLiteral("Link Error"));
}

void frmrealtime::take_reading(const LiveReading& reading) {
  // Another recorder type can have been chosen since the window opened.
  if (live_channels(User::DeviceTable, User::RecorderType) != live_.channels()) lay_out_live();
  const QString time = general_date_time_text(shell_.clock().now());
  if (live_.add(time, reading, typed_limits())) save_automatically();
  RedrawGraph();
  show_readings();
  live_.count_answered();
}

std::array<AlarmLimits, 4> frmrealtime::typed_limits() const {
  std::array<AlarmLimits, 4> limits;
  for (std::size_t c = 0; c < limits.size(); ++c) {
    limits[c] = alarm_limits(Text1[2 * c]->text(), Text1[2 * c + 1]->text());
  }
  return limits;
}

// Where the program's own folder cannot be written (installed for all users, say, or full) the
// readings go among the user's documents. The window says where they are, and where they are not.
void frmrealtime::save_automatically() {
  const QString name = automatic_save_name(shell_.clock().now());
  const QString& recorder_name = User::DeviceTable.text(0, User::RecorderType);
  const AutomaticSaveHeader header = {Text6->text(), recorder_name, live_.channels()};
  for (QString (*const folder)() : {program_folder, documents_folder}) {
    const QString path = folder() + u'/' + name;
    if (stop_at_first_failure([&] { save_live_buffer(path, header, live_.buffer); })) {
      return tell_saved(QStringLiteral("Saved automatically: ") + path, false);
    }
  }
  tell_saved(QStringLiteral("Not saved automatically: %1 cannot be written").arg(name), true);
}

void frmrealtime::tell_saved(const QString& text, bool failed) {
  show_spoken(*saved_label, text);
  saved_label->setVisible(true);
  show_alarm(*saved_label, failed);
}

void frmrealtime::lay_out_live() {
  live_.set_channels(live_channels(User::DeviceTable, User::RecorderType));
  for (int c = 0; c < 4; ++c) {
    const auto channel = static_cast<std::size_t>(c);
    const bool present = c < live_.channels().count;
    for (int which = 0; which < labels_per_channel; ++which) {
      Label4[static_cast<std::size_t>(labels_per_channel * c + which)]->setVisible(present);
    }
    Line1[channel]->setVisible(present);
    Label3[channel]->setVisible(present);
    Label3[channel]->setText(live_.channels().names[channel] + u' ' +
                             live_.channels().units[channel]);
  }
  const QString time = general_date_time_text(shell_.clock().now());
  for (QTableView* sheet : {MSFlG1, MSFlG2}) {
    sheet->setColumnWidth(1, time_column_width(*sheet, time));
  }
  show_readings();
  RedrawGraph();
}

void frmrealtime::clear_live_sheet() {
  live_.live_sheet.clear();
  lay_out_live();
}

void frmrealtime::show_readings() {
  for (int c = 0; c < live_.channels().count; ++c) {
    const auto channel = static_cast<std::size_t>(c);
    const ChannelStatus& status = live_.status[channel];
    const ChannelLabels texts = channel_labels(
        c, live_.channels(), status, Text1[2 * channel]->text(), Text1[2 * channel + 1]->text());
    for (std::size_t which = 0; which < texts.size(); ++which) {
      Label4[labels_per_channel * channel + which]->setText(texts[which]);
    }
    QLabel& value = *Label4[labels_per_channel * channel + value_label];
    if (status.alarmed() && !value.font().bold()) {
      announce(value,
               live_.channels().names[channel] + QStringLiteral(" Out Of Range ") + value.text());
    }
    show_alarm(value, status.alarmed());
  }
}

// Red, and bold for those who do not see red.
void frmrealtime::show_alarm(QLabel& label, bool alarmed) {
  QFont font = label.font();
  if (font.bold() == alarmed) return;
  font.setBold(alarmed);
  label.setFont(font);
  QPalette palette;
  if (alarmed) {
    const std::array behind = {palette.color(QPalette::Window)};
    const QColor text = palette.color(QPalette::WindowText);
    palette.setColor(QPalette::WindowText, readable_colour(QColor(216, 0, 0), text, behind));
  }
  label.setPalette(palette);
}
