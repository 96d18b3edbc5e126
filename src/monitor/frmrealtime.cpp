#include "monitor/frmrealtime.h"

#include <QPointer>
#include <QVBoxLayout>

#include "app/shell.h"
#include "app/user.h"
#include "app/waiting.h"
#include "base/clock.h"
#include "base/message_box.h"
#include "device/pattern.h"
#include "monitor/Frmwarn.h"
#include "monitor/live_pane.h"
#include "monitor/recorder_session.h"
#include "monitor/setup_pane.h"

namespace {

constexpr int pause_before_reading_back_ms = 500;

// Shows in the label, while it lives, what work is under way.
class WorkShown {
 public:
  WorkShown(QLabel& label, const QString& work) : label_(&label) { label.setText(work); }
  ~WorkShown() {
    if (label_) label_->clear();
  }
  WorkShown(const WorkShown&) = delete;
  WorkShown& operator=(const WorkShown&) = delete;

 private:
  QPointer<QLabel> label_;
};

}  // namespace

frmrealtime::frmrealtime(Shell& shell, QWidget* parent) : ChildWindow(parent), shell_(shell) {
  setObjectName(QStringLiteral("frmrealtime"));
  setWindowTitle(QStringLiteral("Real-time Data"));
  setup_ = new SetupPane(shell.messages(), this);
  live_ = new LivePane(shell, *this, *setup_);
  auto* panes = new QVBoxLayout(this);
  panes->setContentsMargins(6, 2, 6, 4);
  panes->setSpacing(4);
  panes->addWidget(setup_);
  panes->addWidget(live_, 1);
  connect(setup_->Command4, &QPushButton::clicked, this, &frmrealtime::Command4_Click);
  connect(setup_, &SetupPane::limits_changed, live_, &LivePane::show_readings);
  const RecorderUse& use = Packet::recorder().use;
  const auto show_set_up = [this, &use] { setup_->offer_set(use.free_for(RecorderTask::set_up)); };
  connect(&use, &RecorderUse::changed, this, show_set_up);
  show_set_up();
  // Queued, so that it runs after the handler of the task that has ended.
  connect(&use, &RecorderUse::changed, this, &frmrealtime::refresh_if_due, Qt::QueuedConnection);
}

// A new window's live buffer and sheets are already empty.
void frmrealtime::Form_Load() {
  User::OnlineRefresh = true;
  User::OnlineRecord = true;
  User::OnlineInterval = QTime(0, 0, 5);
  setup_->show_type();
  live_->lay_out();
  RefreshFromRecorder();
  live_->Slider1->setValue(live_->Slider1->maximum());
}

void frmrealtime::Form_Unload() {
  pause_polling();
  // Polling has ended, so the panel's link state would only go out of date.
  shell_.set_panel(2, {});
}

QString frmrealtime::recorder_title() const {
  return setup_->title();
}

std::vector<int> frmrealtime::recorded_channels() const {
  return setup_->recorded_channels();
}

bool frmrealtime::pause_polling() {
  const bool polled = live_->Timer1->enabled();
  live_->Timer1->set_enabled(false);
  return polled;
}

void frmrealtime::resume_polling() {
  live_->Timer1->set_enabled(true);
}

void frmrealtime::restart_polling() {
  if (live_->Timer1->interval() > 0) resume_polling();
}

void frmrealtime::RedrawGraph() {
  live_->RedrawGraph();
}

void frmrealtime::ShowDisplayLimits() {
  const KeepAlive kept(*this);
  Frmwarn(shell_.messages(), shell_.window()).exec();
  if (!kept.unloaded() && !shell_.shutting_down()) RedrawGraph();
}

void frmrealtime::apply_online_settings() {
  const bool polls = User::OnlineRefresh || User::OnlineRecord;
  if (polls) live_->Timer1->set_interval(QTime(0, 0).msecsTo(User::OnlineInterval));
  live_->Timer1->set_enabled(polls);
  if (!polls) shell_.set_panel(2, {});
  live_->clear_sheet();
}

void frmrealtime::refresh_if_due() {
  const RecorderUse& use = Packet::recorder().use;
  if (refresh_due_ && !unloaded() && use.free_for(RecorderTask::refresh)) RefreshFromRecorder();
}

void frmrealtime::RefreshFromRecorder() {
  const RecorderSession session(*this, shell_, RecorderTask::refresh);
  if (session.granted()) read_recorder(session);
  refresh_due_ = !session.granted() || session.overtaken();
}

void frmrealtime::read_recorder(const RecorderSession& session) {
  const Waiting waiting(shell_, QStringLiteral("Reading the recorder's properties."));
  const WorkShown work(*setup_->work_label, QStringLiteral("Reading ..."));
  if (setup_->read_recorder(session)) live_->lay_out();
}

bool frmrealtime::write_recorder(const RecorderSession& session, const PatternSettings& settings) {
  const Waiting waiting(shell_, QStringLiteral("Setting the recorder's properties."));
  const WorkShown work(*setup_->work_label, QStringLiteral("Setting ..."));
  if (setup_->write_recorder(session, settings)) return true;
  if (!session.closed() && !session.repeated()) tell_failure();
  return false;
}

void frmrealtime::tell_failure() {
  const KeepAlive kept(*this);
  shell_.set_panel(2, {});
  shell_.messages().show(QStringLiteral("Setting is Failed"));
  if (!kept.unloaded()) setup_->show_refused();
}

// "Properties Set". Takes the recorder only after the question, so another task can use it while
// the box is open.
void frmrealtime::Command4_Click() {
  const KeepAlive kept(*this);
  const bool confirmed = shell_.messages().ask(
      QStringLiteral("Setting Recorder's Properties will Lose Historical Sampling，Continue?"));
  if (!confirmed || kept.unloaded() || shell_.shutting_down()) return;
  const RecorderSession session(*this, shell_, RecorderTask::set_up);
  session.granted() ? set_properties(session) : tell_failure();
}

// After a failed request, polling stays off until the Online Record dialog switches it on again.
// The link panel is then empty, because nothing polls.
void frmrealtime::set_properties(const RecorderSession& session) {
  pause_polling();
  const auto settings = setup_->encode_typed(shell_.clock().now());
  if (!settings) {
    shell_.messages().show(QStringLiteral("Input Error ，Please Retry"));
    if (session.ended()) return;
    setup_->show_refused();
    return restart_polling();
  }
  if (!write_recorder(session, *settings)) return;
  shell_.clock().sleep(pause_before_reading_back_ms);
  read_recorder(session);
  if (!session.ended()) restart_polling();
}
