#include "acquire/download.h"

#include <QScopedValueRollback>
#include <QString>

#include <cmath>
#include <optional>
#include <vector>

#include "acquire/block.h"
#include "acquire/frmhistorytime.h"
#include "acquire/segments.h"
#include "app/shell.h"
#include "app/user.h"
#include "base/clock.h"
#include "base/errors.h"
#include "base/message_box.h"
#include "base/numbers.h"
#include "base/times.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"

namespace {

constexpr int pause_after_block_ms = 100;
constexpr int view_after_download = 128;
constexpr Packet::Retries retries = {.tries = 3, .pause = 50, .pause_after_last = true};
// The times of all readings hang on the moment of this answer; no late one is waited for, and while
// the user chooses segments it has time to come.
constexpr Packet::Retries properties_retries = {
    .tries = 3, .pause = 50, .pause_after_last = true, .await_late_answers = false};

// One download. Other events run in its waits, so the Real-time Data window can be closed and the
// program can end in the middle: what is needed of the window is taken before each wait, and the
// readings that were asked for are still fetched when the window is gone.
class Download {
 public:
  explicit Download(Shell& shell) : shell_(shell) {}
  void run();

 private:
  bool left() const { return shell_.shutting_down(); }
  void take_settings(const frmrealtime& window);
  bool take_window();
  bool read_properties();
  bool choose_segments();
  bool read_segments();
  bool read_block(int position, int count);
  void store();
  void show_progress(int position, int count);
  void restart_polling();
  void end(bool restart);
  void link_timeout();

  Shell& shell_;
  bool polling_before_ = false;
  QString title_;
  std::int16_t recorder_type_ = 0;
  std::vector<int> channel_list_;  // recorder channel 0..3 of each slot
  MemoryMap memory_;
  int samples_wanted_ = 0;
  DownloadedSamples samples_;
};

void Download::run() {
  shell_.set_panel(1, QStringLiteral("Read Data"));
  if (!take_window() || !read_properties() || !choose_segments() || !read_segments()) return;
  store();
  shell_.unload_display();
  shell_.show_display();
  shell_.enable_data_commands(true);
  shell_.set_progress(0, {});
  end(true);
}

// The window is loaded, which reads the recorder, if it is not. Without it there is nobody to say
// which channels are recorded.
bool Download::take_window() {
  frmrealtime* window = shell_.realtime();
  if (left()) return false;
  if (!window) {
    end(false);
    return false;
  }
  polling_before_ = window->Timer1->enabled();
  window->Timer1->set_enabled(false);
  recorder_type_ = User::RecorderType;
  take_settings(*window);
  return true;
}

void Download::take_settings(const frmrealtime& window) {
  title_ = window.Text6->text();
  channel_list_.clear();
  for (int i = 0; i < Recording::max_channels; ++i) {
    if (window.Check1[static_cast<std::size_t>(i)]->isChecked()) channel_list_.push_back(i);
  }
}

bool Download::read_properties() {
  const bool answered =
      Packet::request(Packet::BuildReadProperties, properties_retries, [this] { return left(); });
  if (left()) return false;
  if (!answered) {
    link_timeout();
    if (left()) return false;
    end(true);
    return false;
  }
  const QByteArray answer = Packet::ReceiveBuffer;
  if (const frmrealtime* window = shell_.loaded_realtime()) take_settings(*window);
  // No channel taking part in the recording leaves nothing to share the readings among.
  if (stored_readings(answer) == 0 || channel_list_.empty()) {
    shell_.messages().show(QStringLiteral("No Data"));
    return false;
  }
  memory_ = map_memory(answer, static_cast<int>(channel_list_.size()), shell_.clock().now());
  return true;
}

bool Download::choose_segments() {
  User::SegmentCount = static_cast<std::int16_t>(memory_.segment_count);
  for (std::size_t k = 0; k < memory_.segments.size(); ++k) {
    const Segment& segment = memory_.segments[k];
    User::SegmentTimes[k][0] = general_date_time_text(whole_second(segment.first));
    User::SegmentTimes[k][1] = general_date_time_text(whole_second(segment.last));
  }
  const QString message = QStringLiteral("  Recorder's Historical Data Is Form") +
                          general_date_time_text(whole_second(memory_.start)) +
                          QStringLiteral("To") + general_date_time_text(whole_second(memory_.end)) +
                          QStringLiteral("，Please Select Data Segment");
  frmhistorytime dialog(message, shell_.messages(), shell_.window());
  dialog.exec();
  if (left()) return false;
  if (!dialog.confirmed()) {
    end(polling_before_);
    return false;
  }
  samples_wanted_ = samples_in(memory_, User::FirstSegment, User::LastSegment);
  return true;
}

bool Download::read_segments() {
  const int first = User::FirstSegment;
  const int last = User::LastSegment;
  for (int i = 0; i <= last - first; ++i) {
    show_progress(i, last - first + 1);
    const int block = i + (memory_.segment_count - 1 - last);
    const bool answered = Packet::request([block] { return Packet::BuildReadBlock(block); },
                                          retries, [this] { return left(); });
    if (left()) return false;
    const QByteArray answer = Packet::ReceiveBuffer;
    shell_.clock().sleep(pause_after_block_ms);
    if (!answered) {
      link_timeout();
      shell_.set_progress(0, {});
      end(true);
      return false;
    }
    const auto& segment = memory_.segments[static_cast<std::size_t>(last - i)];
    const BlockPlace place = {.channels = memory_.channels,
                              .interval = memory_.interval,
                              .samples_wanted = samples_wanted_,
                              .position = i,
                              .first = whole_second(segment.first)};
    skip_on_error([&] { place_block(answer, place, samples_); });
  }
  return true;
}

void Download::show_progress(int position, int count) {
  const double value = position * 99.0 / count + 1;
  const auto whole = static_cast<int>(std::lround(value));
  shell_.set_progress(whole, QString::number(whole) + u'%');
}

// Samples beyond the Recording's bound are not stored, and the count stops there.
void Download::store() {
  Recording& recording = User::recording;
  if (const frmrealtime* window = shell_.loaded_realtime()) title_ = window->Text6->text();
  recording.Title = title_;
  recording.RecorderName = User::DeviceTable.text(0, recorder_type_);
  recording.ChannelCount = static_cast<std::int16_t>(channel_list_.size());
  for (std::size_t slot = 0; slot < channel_list_.size(); ++slot) {
    const int channel = channel_list_[slot];
    recording.ChannelInfo[0][slot] = QString::number(channel + 1);
    recording.ChannelInfo[1][slot] = User::DeviceTable.text(2 * channel + 3, recorder_type_);
    recording.ChannelInfo[2][slot] = User::DeviceTable.text(2 * channel + 4, recorder_type_);
  }
  const int count = std::min(samples_.count, Recording::max_samples);
  for (int n = 0; n < count; ++n) {
    recording.SampleTimes(n) = samples_.times[static_cast<std::size_t>(n)];
    for (int slot = 0; slot < Recording::channel_slots; ++slot) {
      recording.SampleValues(n, slot) =
          samples_.values[static_cast<std::size_t>(n * Recording::channel_slots + slot)];
    }
  }
  recording.SampleCount = count;
  recording.ViewCount = view_after_download;
}

void Download::end(bool restart) {
  if (restart) restart_polling();
  shell_.set_panel(1, {});
}

void Download::restart_polling() {
  if (frmrealtime* window = shell_.loaded_realtime()) window->Timer1->set_enabled(true);
}

void Download::link_timeout() {
  shell_.messages().show(QStringLiteral("Link Timeout!"), QStringLiteral("Warnning"));
}

}  // namespace

// A second download would read the blocks that the first one waits for: the command is ignored
// until the first has ended.
void ReadRecorderData(Shell& shell) {
  if (User::Downloading) return;
  const QScopedValueRollback under_way(User::Downloading, true);
  skip_on_error([&] { Download(shell).run(); });
}
