#include "acquire/download.h"

#include <QPointer>
#include <QString>

#include <cmath>

#include "acquire/download_engine.h"
#include "acquire/frmhistorytime.h"
#include "app/shell.h"
#include "app/user.h"
#include "app/waiting.h"
#include "base/errors.h"
#include "base/escape_key.h"
#include "base/message_box.h"
#include "base/times.h"
#include "device/packet.h"
#include "monitor/frmrealtime.h"

namespace {

// One download. Other events run in its waits, so meanwhile the Real-time Data window can be closed
// and opened again, and the program can end. A closed window does not stop the download; title and
// channels are then those of the window that it began with.
class Download {
 public:
  Download(Shell& shell, frmrealtime& window)
      : shell_(shell),
        window_(&window),
        turn_(Packet::recorder().use, RecorderTask::download),
        escape_([this] { cancelled_ = true; }),
        engine_(Packet::recorder(), [this] { return abandoned(); }) {}
  void run();

 private:
  bool abandoned() const { return cancelled_ || shell_.shutting_down() || turn_.overtaken(); }
  bool asks_window() const { return window_ && !window_->unloaded(); }
  void ask_window();
  bool read_properties();
  bool choose_segments(const MemoryMap& memory);
  bool read_segments();
  void leave();
  void cancel();
  // Calls `read` while the program shows that it waits.
  template <class Read>
  auto waiting(Read&& read) {
    const Waiting shown(shell_, QStringLiteral("Reading the recorder's data. Esc ends it."));
    return std::forward<Read>(read)();
  }
  void show_progress(int position);
  void finish();
  void link_timeout();

  Shell& shell_;
  QPointer<frmrealtime> window_;
  RecorderUse::Turn turn_;
  bool cancelled_ = false;
  EscapeKey escape_;
  bool polled_ = false;  // polling was on before the download
  DownloadEngine engine_;
  RecordingHeader header_;
};

void Download::run() {
  if (!turn_) return shell_.set_panel(1, {});
  polled_ = window_->pause_polling();
  header_.recorder_type = User::RecorderType;
  ask_window();
  if (!read_properties() || !read_segments()) return leave();
  if (asks_window()) header_.title = window_->recorder_title();
  engine_.store(header_, User::DeviceTable, User::recording);
  shell_.unload_display();
  shell_.show_display();
  shell_.enable_data_commands(true);
  shell_.set_progress(0, {});
  finish();
}

// Cleans up if the user, or a command inside its endless wait, has ended the download. If that
// command is another download, there is nothing left to do.
void Download::leave() {
  if (shell_.shutting_down() || turn_.repeated()) return;
  if (turn_.overtaken()) {
    shell_.set_progress(0, {});
    link_timeout();
  } else if (cancelled_) {
    cancel();
  }
}

// Restores the state before the download.
void Download::cancel() {
  shell_.set_progress(0, {});
  shell_.set_panel(1, {});
  frmrealtime* window = shell_.loaded_realtime();
  if (window && polled_) window->resume_polling();
}

// Asks the window for title and channels. Once it is closed, its last answers count.
void Download::ask_window() {
  if (!asks_window()) return;
  header_.title = window_->recorder_title();
  header_.channels = window_->recorded_channels();
}

bool Download::read_properties() {
  const auto properties = waiting([this] { return engine_.read_properties(); });
  if (abandoned()) return false;
  if (!properties) {
    link_timeout();
    return false;
  }
  ask_window();
  // Without a recording channel there is nothing to divide the readings among.
  if (properties->readings_held == 0 || header_.channels.empty()) {
    // Polling stays off, so what the panel says of the link would only grow older.
    shell_.set_panel(2, {});
    shell_.messages().show(QStringLiteral("No Data"));
    return false;
  }
  return choose_segments(engine_.map(*properties, static_cast<int>(header_.channels.size())));
}

bool Download::choose_segments(const MemoryMap& memory) {
  User::SegmentCount = static_cast<std::int16_t>(memory.segment_count);
  for (std::size_t k = 0; k < memory.segments.size(); ++k) {
    const Segment& segment = memory.segments[k];
    User::SegmentTimes[k][0] = general_date_time_text(whole_second(segment.first));
    User::SegmentTimes[k][1] = general_date_time_text(whole_second(segment.last));
  }
  const QString message = QStringLiteral("  Recorder's Historical Data Is Form") +
                          general_date_time_text(whole_second(memory.start)) +
                          QStringLiteral("To") + general_date_time_text(whole_second(memory.end)) +
                          QStringLiteral("，Please Select Data Segment");
  frmhistorytime dialog(message, shell_.messages(), shell_.window());
  dialog.exec();
  if (abandoned()) return false;
  if (!dialog.confirmed()) {
    finish();
    return false;
  }
  engine_.choose(User::FirstSegment, User::LastSegment);
  return true;
}

bool Download::read_segments() {
  const bool complete = waiting(
      [this] { return engine_.read_blocks([this](int position) { show_progress(position); }); });
  if (complete || abandoned()) return complete;
  link_timeout();
  shell_.set_progress(0, {});
  return false;
}

void Download::show_progress(int position) {
  const double value = position * 99.0 / engine_.blocks() + 1;
  const auto whole = static_cast<int>(std::lround(value));
  shell_.set_progress(whole, QString::number(whole) + u'%');
}

void Download::finish() {
  if (frmrealtime* window = shell_.loaded_realtime()) window->resume_polling();
  shell_.set_panel(1, {});
}

void Download::link_timeout() {
  shell_.messages().show(QStringLiteral("Link Timeout!"), QStringLiteral("Warnning"));
  if (!shell_.shutting_down()) finish();
}

// Loads the Real-time Data window if it is not loaded, which reads the recorder. Only that window
// knows which channels are recorded.
void read_data(Shell& shell) {
  shell.set_panel(1, QStringLiteral("Read Data"));
  frmrealtime* window = shell.realtime();
  if (shell.shutting_down()) return;
  if (!window) return shell.set_panel(1, {});
  Download(shell, *window).run();
}

}  // namespace

void ReadRecorderData(Shell& shell) {
  if (!Packet::recorder().use.free_for(RecorderTask::download)) return;
  stop_at_first_failure([&] { read_data(shell); });
}
