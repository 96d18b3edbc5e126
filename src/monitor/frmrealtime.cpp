#include "monitor/frmrealtime.h"

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "device/limits.h"
#include "device/properties.h"
#include "device/status.h"
#include "device/texts.h"
#include "monitor/recorder_session.h"
#include "monitor/time_picker.h"

frmrealtime::frmrealtime(Shell& shell, QWidget* parent) : ChildWindow(parent), shell_(shell) {
  constexpr int design_interval_ms = 5000;
  Timer1 = new IntervalTimer(design_interval_ms, this);
  build();
  connect(Timer1, &IntervalTimer::tick, this, &frmrealtime::Timer1_Timer);
  const RecorderUse& use = Packet::recorder().use;
  connect(&use, &RecorderUse::changed, this,
          [this, &use] { Command4->setEnabled(use.free_for(RecorderTask::set_up)); });
  // Later, when the task that has ended has left its handler.
  connect(&use, &RecorderUse::changed, this, &frmrealtime::refresh_if_due, Qt::QueuedConnection);
}

// The live buffer and the sheets are empty in a new window.
void frmrealtime::Form_Load() {
  User::OnlineRefresh = true;
  User::OnlineRecord = true;
  User::OnlineInterval = QTime(0, 0, 5);
  Text5->setText(User::DeviceTable.text(0, User::RecorderType));
  lay_out_live();
  RefreshFromRecorder();
  Slider1->setValue(Slider1->maximum());
}

void frmrealtime::Form_Unload() {
  Timer1->set_enabled(false);
  // Nobody polls any more: what the panel says would only grow older.
  shell_.set_panel(2, {});
}

std::vector<int> frmrealtime::recorded_channels() const {
  std::vector<int> channels;
  for (std::size_t c = 0; c < Check1.size(); ++c) {
    if (Check1[c]->isChecked()) channels.push_back(static_cast<int>(c));
  }
  return channels;
}

void frmrealtime::refresh_if_due() {
  const RecorderUse& use = Packet::recorder().use;
  if (refresh_due_ && !unloaded() && use.free_for(RecorderTask::refresh)) RefreshFromRecorder();
}

void frmrealtime::RefreshFromRecorder() {
  const Session session(*this, RecorderTask::refresh);
  refresh_due_ = !session.granted();
  if (session.granted()) read_recorder(session);
}

void frmrealtime::read_recorder(const Session& session) {
  if (!read_properties(session)) return;
  if (!read_texts(session)) return;
  if (!read_battery(session)) return;
  if (!read_limits(session)) return;
  lay_out_live();
}

bool frmrealtime::read_properties(const Session& session) {
  const auto answer = session.request(Packet::BuildReadProperties);
  if (!answer) return false;
  const RecorderProperties properties = decode_properties(*answer);
  Text3->setText(properties.start_text);
  Combo2->setCurrentIndex(static_cast<int>(properties.startup_type));
  Text2->setText(properties.recording ? QStringLiteral("Recording") : QStringLiteral("Stop"));
  Combo3->setCurrentIndex(properties.wrap ? 1 : 0);
  for (std::size_t c = 0; c < Check1.size(); ++c) Check1[c]->setChecked(properties.channels[c]);
  set_picked_seconds(*DTP2, properties.startup_delay);
  set_picked_seconds(*DTP1, properties.record_interval);
  Text14->setText(QString::number(properties.all_data));
  Text11->setText(QString::number(properties.readings_held));
  return true;
}

bool frmrealtime::read_texts(const Session& session) {
  const auto answer = session.request(Packet::BuildReadDescription);
  if (!answer) return false;
  const RecorderTexts texts = decode_texts(*answer);
  User::TitleBytes = texts.title;
  User::DescriptionBytes.fill(0);
  std::copy(texts.description.begin(), texts.description.end(), User::DescriptionBytes.begin());
  Text15->setText(text_of_units(User::DescriptionBytes.data(), 2 * description_units));
  Text6->setText(text_of_units(User::TitleBytes.data(), 2 * title_units));
  return true;
}

bool frmrealtime::read_battery(const Session& session) {
  const auto answer = session.request(Packet::BuildStatusRequest);
  if (!answer) return false;
  const bool enough = decode_status(*answer).battery_ok();
  Text4->setText(enough ? QStringLiteral("Ok") : QStringLiteral("Error"));
  return true;
}

bool frmrealtime::read_limits(const Session& session) {
  const int channels = live_channels(User::DeviceTable, User::RecorderType).count;
  for (int channel = 1; channel <= channels; ++channel) {
    const auto answer = session.request([channel] { return Packet::BuildReadLimits(channel); });
    if (!answer) return false;
    const ChannelLimits limits = decode_limits(*answer);
    const auto up = static_cast<std::size_t>(2 * (channel - 1));
    Text1[up]->setText(fixed2(limits.up));
    Text1[up + 1]->setText(fixed2(limits.down));
  }
  return true;
}
