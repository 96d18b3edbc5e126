#include "monitor/frmrealtime.h"

#include "app/shell.h"
#include "app/user.h"
#include "base/errors.h"
#include "base/numbers.h"
#include "device/packet.h"
#include "monitor/properties.h"
#include "monitor/time_picker.h"

frmrealtime::frmrealtime(Shell& shell, QWidget* parent) : ChildWindow(parent), shell_(shell) {
  constexpr int design_interval_ms = 5000;
  Timer1 = new IntervalTimer(design_interval_ms, this);
  build();
  connect(Timer1, &IntervalTimer::tick, this, &frmrealtime::Timer1_Timer);
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

bool frmrealtime::left(const Handler& running) const {
  return running.unloaded() || shell_.shutting_down();
}

void frmrealtime::RefreshFromRecorder() {
  const Handler running(*this);
  if (!read_properties(running)) return;
  if (!read_texts(running)) return;
  if (!read_battery(running)) return;
  if (!read_limits(running)) return;
  lay_out_live();
}

bool frmrealtime::read(const Handler& running, const std::function<int()>& build) {
  return Packet::request(build, {}, [&] { return left(running); }) && !left(running);
}

bool frmrealtime::read_properties(const Handler& running) {
  if (!read(running, Packet::BuildReadProperties)) return false;
  const RecorderProperties properties = decode_properties(Packet::ReceiveBuffer);
  Text3->setText(properties.start_time);
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

bool frmrealtime::read_texts(const Handler& running) {
  if (!read(running, Packet::BuildReadDescription)) return false;
  const RecorderTexts texts = decode_texts(Packet::ReceiveBuffer);
  User::TitleBytes = texts.title;
  User::DescriptionBytes.fill(0);
  std::copy(texts.description.begin(), texts.description.end(), User::DescriptionBytes.begin());
  Text15->setText(text_of_units(User::DescriptionBytes.data(), 48));
  Text6->setText(text_of_units(User::TitleBytes.data(), 16));
  return true;
}

bool frmrealtime::read_battery(const Handler& running) {
  if (!read(running, Packet::BuildStatusRequest)) return false;
  const bool enough = battery_voltage(Packet::ReceiveBuffer) >= least_voltage;
  Text4->setText(enough ? QStringLiteral("Ok") : QStringLiteral("Error"));
  return true;
}

bool frmrealtime::read_limits(const Handler& running) {
  int channels = 0;
  skip_on_error([&] { channels = User::DeviceTable.channel_count(User::RecorderType); });
  for (int channel = 1; channel <= channels; ++channel) {
    if (!read(running, [channel] { return Packet::BuildReadLimits(channel); })) return false;
    const ChannelLimits limits = decode_limits(Packet::ReceiveBuffer);
    const auto up = static_cast<std::size_t>(2 * (channel - 1));
    Text1[up]->setText(fixed2(limits.up));
    Text1[up + 1]->setText(fixed2(limits.down));
  }
  return true;
}
