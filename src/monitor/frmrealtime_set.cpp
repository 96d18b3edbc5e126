// "Properties Set": writes what stands in the window into the recorder.
#include "app/shell.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/numbers.h"
#include "device/pattern.h"
#include "monitor/recorder_session.h"
#include "monitor/time_picker.h"

namespace {

constexpr int pause_before_reading_back_ms = 500;

// What is wrong with a channel's typed limits; nothing where both are numbers.
QString limits_error(int channel, const QString& up, const QString& down) {
  const QString which = QStringLiteral("Channel No.%1").arg(channel);
  if (!is_number(up)) return which + QStringLiteral("Up Limit Error");
  if (!is_number(down)) return which + QStringLiteral("Down Limit Error");
  return {};
}

}  // namespace

// The question is asked without the recorder: another task can take it while the box is open.
void frmrealtime::Command4_Click() {
  const Handler running(*this);
  const bool confirmed = shell_.messages().ask(
      QStringLiteral("Setting Recorder's Properties will Lose Historical Sampling，Continue?"));
  if (!confirmed || running.unloaded() || shell_.shutting_down()) return;
  const Session session(*this, RecorderTask::set_up);
  if (session.granted()) set_properties(session);
}

// After a failed request polling stays off, until the online-record dialog switches it on again.
void frmrealtime::set_properties(const Session& session) {
  pause_polling();
  const PatternSettings settings = typed_settings();
  if (!take_typed(settings)) {
    shell_.messages().show(QStringLiteral("Input Error ，Please Retry"));
    if (!session.ended()) restart_polling();
    return;
  }
  if (!write_all(session, settings.startup_type)) return;
  shell_.clock().sleep(pause_before_reading_back_ms);
  read_recorder(session);
  if (!session.ended()) restart_polling();
}

PatternSettings frmrealtime::typed_settings() const {
  PatternSettings settings;
  settings.startup_type = static_cast<StartupType>(Combo2->currentIndex());
  settings.wrap = Combo3->currentIndex() == 1;
  for (std::size_t c = 0; c < Check1.size(); ++c) settings.channels[c] = Check1[c]->isChecked();
  settings.startup_delay = picked_seconds(*DTP2);
  settings.record_interval = picked_seconds(*DTP1);
  settings.all_data = Text14->text();
  return settings;
}

// The bytes to send, from what is typed; false when something of it cannot be sent.
bool frmrealtime::take_typed(const PatternSettings& settings) {
  return stop_at_first_failure([&] {
    if (settings.startup_type == StartupType::start_up) Text12->setText(QStringLiteral("0"));
    encode_pattern(settings, shell_.clock().now(), User::PatternBytes);
    User::DescriptionBytes = encode_texts(Text6->text(), Text15->text());
  });
}

bool frmrealtime::write_all(const Session& session, StartupType startup_type) {
  if (!write(session, Packet::BuildWriteDescription)) return false;
  if (!write(session, Packet::BuildWriteProperties)) return false;
  const int channels = live_channels(User::DeviceTable, User::RecorderType).count;
  for (int channel = 1; channel <= channels; ++channel) {
    if (!write_limits(session, channel)) return false;
  }
  // The pattern that was sent asks for start or stop already, so neither of these ever holds; both
  // are kept on purpose.
  const bool stop = startup_type == StartupType::stop;
  const bool start_requested = requests_start(User::PatternBytes);
  if (!start_requested && !stop && !write(session, [] { return Packet::BuildCommand07(1); })) {
    return false;
  }
  return !(stop && start_requested) || write(session, [] { return Packet::BuildCommand07(0); });
}

// A limit that is not a number is told at each try. The builder then leaves the request before it
// in place, and that one goes out once more.
bool frmrealtime::write_limits(const Session& session, int channel) {
  const auto up_box = static_cast<std::size_t>(2 * (channel - 1));
  return write(session, [&] {
    const QString up = Text1[up_box]->text();
    const QString down = Text1[up_box + 1]->text();
    const QString error = limits_error(channel, up, down);
    if (!error.isEmpty()) shell_.messages().show(error);
    return Packet::BuildWriteLimits(channel, up, down);
  });
}

bool frmrealtime::write(const Session& session, const std::function<int()>& build) {
  if (session.request(build)) return true;
  if (!session.ended()) shell_.messages().show(QStringLiteral("Setting is Failed"));
  return false;
}

void frmrealtime::restart_polling() {
  if (Timer1->interval() > 0) Timer1->set_enabled(true);
}
