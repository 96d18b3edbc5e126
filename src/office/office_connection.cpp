#include "office/office_connection.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScopeGuard>
#include <QThread>
#include <QUuid>

#include <algorithm>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/bridge/BridgeFactory.hpp>
#include <com/sun/star/bridge/XBridge.hpp>
#include <com/sun/star/connection/Connector.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <cppuhelper/implbase1.hxx>
#include <rtl/bootstrap.hxx>
#include <unistd.h>

#include "data/whole_file.h"
#include "office/office_text.h"

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr int poll_interval_ms = 20;
// Long, because the suite's first start creates the user's profile.
constexpr int start_limit_ms = 60'000;
// A process that passes its arguments to a running one ends at once. A process that is asked to end
// does so within this time.
constexpr int end_limit_ms = 5'000;
// How long a start may go on after it is given up: killed at once it would leave files behind.
constexpr int give_up_limit_ms = 900;

void dispose(const Reference<css::uno::XInterface>& object) {
  try {
    const Reference<css::lang::XComponent> component(object, UNO_QUERY);
    if (component.is()) component->dispose();
  } catch (const css::uno::Exception&) {
    // The object no longer exists.
  }
}

// Counts the windows that open. They are the user's, because an exported document has no window.
class OpenedWindows final : public cppu::WeakImplHelper1<css::awt::XTopWindowListener> {
 public:
  explicit OpenedWindows(std::shared_ptr<std::atomic<int>> count) : count_(std::move(count)) {}

  void SAL_CALL windowOpened(const css::lang::EventObject&) override { ++*count_; }
  void SAL_CALL windowClosing(const css::lang::EventObject&) override {}
  void SAL_CALL windowClosed(const css::lang::EventObject&) override {}
  void SAL_CALL windowMinimized(const css::lang::EventObject&) override {}
  void SAL_CALL windowNormalized(const css::lang::EventObject&) override {}
  void SAL_CALL windowActivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowDeactivated(const css::lang::EventObject&) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::shared_ptr<std::atomic<int>> count_;
};

// The path at which the suite creates the pipe.
QString pipe_path(const QString& pipe) {
  return QStringLiteral("/tmp/OSL_PIPE_%1_%2").arg(getuid()).arg(pipe.section('=', 1));
}

}  // namespace

OfficeConnection::OfficeConnection() = default;

void OfficeConnection::open(const Automation::GiveUp& give_up) {
  try {
    rtl::Bootstrap::set("URE_BOOTSTRAP", "vnd.sun.star.pathname:" OFFICE_PROGRAM "/fundamentalrc");
    local_ = cppu::defaultBootstrap_InitialComponentContext();
    launch();
    connect(give_up);
    if (started()) watch_windows();
  } catch (const css::uno::Exception&) {
    throw AutomationError("no connection to the office suite");
  }
}

// The pipe's name cannot be guessed, and the office process lets only its own user open the pipe.
void OfficeConnection::launch() {
  pipe_ = QStringLiteral("pipe,name=corvane_") + QUuid::createUuid().toString(QUuid::Id128);
  process_.start({QStringLiteral("--accept=%1;urp;").arg(pipe_)});
}

void OfficeConnection::connect(const Automation::GiveUp& give_up) {
  QElapsedTimer timer;
  timer.start();
  int limit = start_limit_ms;
  while (!try_to_connect()) {
    // Once the started process has ended, only a process that took over its pipe can answer.
    if (limit == start_limit_ms && !process_.running()) {
      limit = static_cast<int>(timer.elapsed()) + end_limit_ms;
    }
    if (give_up()) limit = std::min(limit, static_cast<int>(timer.elapsed()) + give_up_limit_ms);
    if (abandoned_.stop_requested() || timer.hasExpired(limit)) {
      // The user cannot have opened anything yet in a process that has just started.
      process_.end();
      QFile::remove(pipe_path(pipe_));
      throw AutomationError("the office suite does not answer");
    }
    QThread::msleep(poll_interval_ms);
  }
  process_.find_server(pipe_path(pipe_));
  if (!give_up()) return;
  quit();
  throw AutomationError("given up");
}

bool OfficeConnection::try_to_connect() {
  try {
    const auto pipe = css::connection::Connector::create(local_)->connect(to_uno(pipe_));
    const Reference<css::bridge::XBridge> bridge =
        css::bridge::BridgeFactory::create(local_)->createBridge({}, "urp", pipe, nullptr);
    {
      const std::lock_guard lock(bridge_mutex_);
      bridge_ = bridge;
    }
    office_.set(bridge->getInstance("StarOffice.ComponentContext"), UNO_QUERY_THROW);
    return true;
  } catch (const css::uno::Exception&) {
    // No process listens yet, or the one that listens is ending.
    dispose(bridge_);
    return false;
  }
}

Reference<css::uno::XInterface> OfficeConnection::create(const QString& service) const {
  return Reference<css::uno::XInterface>(
      office_->getServiceManager()->createInstanceWithContext(to_uno(service), office_),
      UNO_QUERY_THROW);
}

void OfficeConnection::watch_windows() {
  toolkit_ = css::awt::Toolkit::create(office_);
// Deprecated, but without a replacement.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  toolkit_->addTopWindowListener(new OpenedWindows(users_windows_));
#pragma GCC diagnostic pop
  used_by_user();
}

bool OfficeConnection::used_by_user() {
  int windows_before = *users_windows_;
  const auto desktop = css::frame::Desktop::create(office_);
  const bool used = desktop->getComponents()->createEnumeration()->hasMoreElements() ||
                    desktop->getFrames()->hasElements();
  if (used) {
    ++*users_windows_;
  } else {
    // Keeps the count if the user has opened a window meanwhile.
    users_windows_->compare_exchange_strong(windows_before, 0);
  }
  return used;
}

void OfficeConnection::quit() {
  if (!started() || used_by_user()) return;
  try {
    ending_ = css::frame::Desktop::create(office_)->terminate();
  } catch (const css::lang::DisposedException&) {
    // The process ended before its answer arrived.
    ending_ = true;
  }
  process_.wait_for_end(end_limit_ms);
}

void OfficeConnection::write_file(const QString& path, std::string_view bytes) {
  writing_ = true;
  const auto written = qScopeGuard([this] { writing_ = false; });
  write_whole_file(path, bytes, abandoned_.get_token());
}

bool OfficeConnection::alive() {
  try {
    if (abandoned_.stop_requested() || !office_.is()) return false;
    used_by_user();
    return true;
  } catch (const css::uno::Exception&) {
    return false;
  }
}

std::optional<AutomationActivity> OfficeConnection::activity() const {
  if (writing_) return std::nullopt;
  return AutomationActivity{.answers = answers_, .processor_ms = process_.processor_ms()};
}

void OfficeConnection::abandon() {
  if (*users_windows_ == 0 && !ending_) process_.end();
  abandoned_.request_stop();
  Reference<css::uno::XInterface> bridge;
  {
    const std::lock_guard lock(bridge_mutex_);
    bridge = bridge_;
  }
  dispose(bridge);
}

// Closes the pipe into a process that keeps running: no one will use it again.
void OfficeConnection::withdraw_pipe() const {
  skip_on_error([this] {
    // If the suite has ended meanwhile, start() starts a new one, which must end here.
    OfficeProcess messenger;
    messenger.start({QStringLiteral("--unaccept=%1;urp;").arg(pipe_)});
    if (!messenger.wait_for_end(end_limit_ms)) messenger.end();
  });
}

OfficeConnection::~OfficeConnection() {
  if (alive()) withdraw_pipe();
  toolkit_.clear();
  office_.clear();
  dispose(bridge_);
  dispose(local_);
}
