// "Properties Set": writes what stands in the window into the recorder.
#include "app/shell.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"
#include "monitor/pattern.h"
#include "monitor/time_picker.h"

namespace {

constexpr int pause_before_reading_back_ms = 500;

}  // namespace

// A second "Properties Set" inside the first would put other bytes under the first one's requests,
// so the button is off meanwhile. In the middle of a download it would empty the memory that is
// being read: the command is ignored.
void frmrealtime::Command4_Click() {
  if (User::Downloading) return;
  const Handler running(*this);
  const bool confirmed = shell_.messages().ask(
      QStringLiteral("Setting Recorder's Properties will Lose Historical Sampling，Continue?"));
  if (!confirmed || left(running) || User::Downloading) return;
  Command4->setEnabled(false);
  set_properties(running);
  Command4->setEnabled(true);
}

// After a failed request polling stays off, until the online-record dialog switches it on again.
void frmrealtime::set_properties(const Handler& running) {
  Timer1->set_enabled(false);
  const PatternSettings settings = typed_settings();
  if (!take_typed(settings)) {
    shell_.messages().show(QStringLiteral("Input Error ，Please Retry"));
    if (!left(running)) restart_polling();
    return;
  }
  if (!write_all(running, settings.startup_type)) return;
  shell_.clock().sleep(pause_before_reading_back_ms);
  RefreshFromRecorder();
  if (!left(running)) restart_polling();
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

bool frmrealtime::write_all(const Handler& running, StartupType startup_type) {
  if (!write(running, Packet::BuildWriteDescription)) return false;
  if (!write(running, Packet::BuildWriteProperties)) return false;
  int channels = 0;
  skip_on_error([&] { channels = User::DeviceTable.channel_count(User::RecorderType); });
  for (int channel = 1; channel <= channels; ++channel) {
    // A limit that is not a number is told to the user by the builder, which then leaves the
    // request before it in place: that one goes out once more.
    const auto build = [&] {
      const auto up = static_cast<std::size_t>(2 * (channel - 1));
      return Packet::BuildWriteLimits(channel, Text1[up]->text(), Text1[up + 1]->text(),
                                      shell_.messages());
    };
    if (!write(running, build)) return false;
  }
  // The pattern that was sent asks for start or stop already, so neither of these ever holds; both
  // are kept on purpose.
  const bool stop = startup_type == StartupType::stop;
  const bool start_requested = requests_start(User::PatternBytes);
  if (!start_requested && !stop && !write(running, [] { return Packet::BuildCommand07(1); })) {
    return false;
  }
  return !(stop && start_requested) || write(running, [] { return Packet::BuildCommand07(0); });
}

bool frmrealtime::write(const Handler& running, const std::function<int()>& build) {
  if (read(running, build)) return true;
  if (!left(running)) shell_.messages().show(QStringLiteral("Setting is Failed"));
  return false;
}

void frmrealtime::restart_polling() {
  if (Timer1->interval() > 0) Timer1->set_enabled(true);
}
