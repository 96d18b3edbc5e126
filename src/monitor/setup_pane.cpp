#include "monitor/setup_pane.h"

#include <QEvent>

#include "app/user.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/numbers.h"
#include "base/read_only.h"
#include "base/tool_tip.h"
#include "device/limits.h"
#include "device/pattern.h"
#include "device/properties.h"
#include "device/status.h"
#include "device/texts.h"
#include "monitor/alarms.h"
#include "monitor/live_channels.h"
#include "monitor/recorder_session.h"
#include "monitor/time_picker.h"

namespace {

// The message for a channel's typed limits; empty if both are numbers.
QString limits_error(int channel, const QString& up, const QString& down) {
  const QString which = QStringLiteral("Channel No.%1").arg(channel);
  if (!is_number(up)) return which + QStringLiteral("Up Limit Error");
  if (!is_number(down)) return which + QStringLiteral("Down Limit Error");
  return {};
}

// Whether the recorder type has the channel of this limit.
bool is_used(std::size_t limit) {
  const int channels = live_channels(User::DeviceTable, User::RecorderType).count;
  return static_cast<int>(limit / 2) < channels;
}

bool can_be_sent(const QString& limit) {
  int word = -1;
  const bool number = stop_at_first_failure([&] { word = encode_limit(limit); });
  return number && word >= 0 && word <= 65535;
}

}  // namespace

SetupPane::SetupPane(MessageBox& messages, QWidget* parent) : QWidget(parent), messages_(messages) {
  build();
}

void SetupPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  for (QLineEdit* box : findChildren<QLineEdit*>()) {
    if (box->isReadOnly()) look_read_only(*box);
  }
}

std::vector<int> SetupPane::recorded_channels() const {
  std::vector<int> channels;
  for (std::size_t c = 0; c < Check1.size(); ++c) {
    if (Check1[c]->isChecked()) channels.push_back(static_cast<int>(c));
  }
  return channels;
}

LimitTexts SetupPane::limits(std::size_t channel) const {
  return {.up = Text1[2 * channel]->text(), .down = Text1[2 * channel + 1]->text()};
}

void SetupPane::show_type() {
  Text5->setText(User::DeviceTable.type_name(User::RecorderType));
  const LiveChannels channels = live_channels(User::DeviceTable, User::RecorderType);
  for (int c = 0; c < SSTab1->count(); ++c) {
    const QString& name = channels.names[static_cast<std::size_t>(c)];
    SSTab1->setTabToolTip(
        c, c < channels.count
               ? plain_tool_tip(QStringLiteral("Channel %1: %2").arg(c + 1).arg(name))
               : QStringLiteral("No channel"));
  }
}

bool SetupPane::read_recorder(const RecorderSession& session) {
  return read_properties(session) && read_texts(session) && read_battery(session) &&
         read_limits(session);
}

bool SetupPane::read_properties(const RecorderSession& session) {
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

bool SetupPane::read_texts(const RecorderSession& session) {
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

bool SetupPane::read_battery(const RecorderSession& session) {
  const auto answer = session.request(Packet::BuildStatusRequest);
  if (!answer) return false;
  const bool enough = decode_status(*answer).battery_ok();
  Text4->setText(enough ? QStringLiteral("Ok") : QStringLiteral("Error"));
  return true;
}

bool SetupPane::read_limits(const RecorderSession& session) {
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

PatternSettings SetupPane::typed_settings() const {
  PatternSettings settings;
  settings.startup_type = static_cast<StartupType>(Combo2->currentIndex());
  settings.wrap = Combo3->currentIndex() == 1;
  for (std::size_t c = 0; c < Check1.size(); ++c) settings.channels[c] = Check1[c]->isChecked();
  settings.startup_delay = picked_seconds(*DTP2);
  settings.record_interval = picked_seconds(*DTP1);
  settings.all_data = Text14->text();
  return settings;
}

std::optional<PatternSettings> SetupPane::encode_typed(const QDateTime& now) {
  const PatternSettings settings = typed_settings();
  const bool taken = stop_at_first_failure([&] {
    if (settings.startup_type == StartupType::start_up) Text12->setText(QStringLiteral("0"));
    encode_pattern(settings, now, User::PatternBytes);
    User::DescriptionBytes = encode_texts(Text6->text(), Text15->text());
  });
  return taken ? std::optional(settings) : std::nullopt;
}

// Marks a limit that is not a number, because it never raises an alarm. The tab carries the mark
// too, since its page can be hidden.
void SetupPane::mark_limit(std::size_t index) {
  QLineEdit& box = *Text1[index];
  const bool marked = is_used(index) && !float_of(box.text());
  const QString reason =
      marked ? QStringLiteral("This is not a number: the limit guards nothing.") : QString();
  box.setToolTip(reason);
  box.setAccessibleDescription(reason);
  limit_marks_[index]->setVisible(marked);
  const bool tab_marked = marked || limit_marks_[index ^ 1U]->isVisible();
  SSTab1->setTabIcon(static_cast<int>(index / 2),
                     tab_marked ? limit_marks_[index]->icon() : QIcon());
}

// Looks for a value that "Properties Set" refuses, in the order in which it encodes them.
void SetupPane::show_refused() {
  constexpr int longest_seconds = 32767;
  const auto bring = [](auto* box) {
    box->setFocus();
    box->selectAll();
  };
  for (QDateTimeEdit* picker : {DTP2, DTP1}) {
    if (picked_seconds(*picker) > longest_seconds) return bring(picker);
  }
  const auto all_data = number_of(Text14->text());
  if (!all_data || *all_data < -0.5 || *all_data >= 65535.5) return bring(Text14);
  for (std::size_t i = 0; i < Text1.size(); ++i) {
    if (!is_used(i) || can_be_sent(Text1[i]->text())) continue;
    SSTab1->setCurrentIndex(static_cast<int>(i / 2));
    return bring(Text1[i]);
  }
}

void SetupPane::offer_set(bool possible) {
  const bool had_focus = window()->focusWidget() == Command4;
  Command4->setEnabled(possible);
  if (!possible) {
    if (had_focus) focus_after_set_ = window()->focusWidget();
    return;
  }
  if (focus_after_set_ && focus_after_set_ == window()->focusWidget()) Command4->setFocus();
  focus_after_set_ = nullptr;
}

bool SetupPane::write_recorder(const RecorderSession& session, const PatternSettings& settings) {
  if (!session.request(Packet::BuildWriteDescription)) return false;
  if (!session.request(Packet::BuildWriteProperties)) return false;
  const int channels = live_channels(User::DeviceTable, User::RecorderType).count;
  for (int channel = 1; channel <= channels; ++channel) {
    if (!write_limits(session, channel)) return false;
  }
  // Neither condition is ever true, because the pattern just sent already asks for start or stop.
  // Both are kept on purpose.
  const bool stop = settings.startup_type == StartupType::stop;
  const bool start_requested = requests_start(User::PatternBytes);
  if (!start_requested && !stop && !session.request([] { return Packet::BuildCommand07(1); })) {
    return false;
  }
  return !(stop && start_requested) || session.request([] { return Packet::BuildCommand07(0); });
}

// Each try shows a message if a limit is not a number. BuildWriteLimits() then leaves the previous
// request in the buffer, so that one is sent again.
bool SetupPane::write_limits(const RecorderSession& session, int channel) {
  const auto up_box = static_cast<std::size_t>(2 * (channel - 1));
  const auto request = [&] {
    const QString up = Text1[up_box]->text();
    const QString down = Text1[up_box + 1]->text();
    const QString error = limits_error(channel, up, down);
    if (!error.isEmpty()) messages_.show(error);
    return Packet::BuildWriteLimits(channel, up, down);
  };
  return session.request(request).has_value();
}
