// The plug-in's entry point: office automation through LibreOffice (docs/export.md).
#include <csignal>
#include <functional>
#include <future>
#include <thread>

#include "data/automation_plugin.h"
#include "office/office_connection.h"
#include "office/office_spreadsheet.h"
#include "office/office_word_processor.h"

namespace {

using Connection = std::shared_ptr<OfficeConnection>;
// `started`: whether the application was started for the caller, who may then quit it.
using MakeApplication = AutomationPointer (*)(Connection, bool started);

// When the program ends, the suite has this long to quit, then as long again to be ended by force.
constexpr std::chrono::milliseconds end_limit(500);

// Returns whether `work` finishes within `limit`. If not, it continues in a detached thread.
bool done_within(std::chrono::milliseconds limit, std::function<void()> work) {
  std::packaged_task<void()> task(std::move(work));
  const auto done = task.get_future();
  std::thread(std::move(task)).detach();
  return done.wait_for(limit) == std::future_status::ready;
}

MakeApplication application_maker(std::string_view application) {
  if (application == "Excel.Application") {
    return
        [](Connection connection, bool) { return spreadsheet_application(std::move(connection)); };
  }
  if (application == "Word.Application") return word_processor_application;
  throw AutomationError("no such application");
}

// The suite runs all its applications in one process. If none runs, opening a connection starts it.
// The connection to a started process is kept until the program ends, which also ends the process.
class OfficeAutomation final : public Automation {
 public:
  AutomationPointer running(std::string_view application, const GiveUp& give_up) override {
    const MakeApplication make = application_maker(application);
    if (const Connection own = own_suite()) {
      use(own);
      if (own->alive()) return make(own, false);
      forget(own);
    }
    const auto connection = std::make_shared<OfficeConnection>();
    use(connection);
    connection->open(give_up);
    if (!connection->started()) return make(connection, false);
    keep(connection);
    throw AutomationError("not running");
  }

  AutomationPointer create(std::string_view application, const GiveUp&) override {
    const MakeApplication make = application_maker(application);
    const std::lock_guard lock(mutex_);
    if (!own_suite_ || !std::exchange(fresh_, false)) throw AutomationError("not started");
    return make(own_suite_, true);
  }

  std::optional<AutomationActivity> activity() const override {
    const Connection connection = in_use();
    if (!connection) return AutomationActivity();
    return connection->activity();
  }

  void give_up() override {
    if (const Connection connection = in_use()) {
      forget(connection);
      connection->abandon();
    }
  }

  void end_own_applications() override {
    Connection own = own_suite();
    if (!own) return;
    forget(own);
    const std::weak_ptr<OfficeConnection> kept = own;
    const bool ended = done_within(end_limit, [own = std::move(own)]() mutable {
      if (own->alive()) own->quit();
      // Closes the pipe into a suite that keeps running.
      own.reset();
    });
    if (ended) return;
    done_within(end_limit, [stuck = kept.lock()] {
      if (stuck) stuck->abandon();
    });
  }

 private:
  Connection own_suite() const {
    const std::lock_guard lock(mutex_);
    return own_suite_;
  }
  Connection in_use() const {
    const std::lock_guard lock(mutex_);
    return in_use_.lock();
  }
  void use(const Connection& connection) {
    const std::lock_guard lock(mutex_);
    in_use_ = connection;
  }
  void keep(const Connection& connection) {
    const std::lock_guard lock(mutex_);
    own_suite_ = connection;
    fresh_ = true;
  }
  void forget(const Connection& connection) {
    const std::lock_guard lock(mutex_);
    if (own_suite_ == connection) own_suite_.reset();
  }

  mutable std::mutex mutex_;
  // The connection to the suite that was started here.
  Connection own_suite_;
  std::weak_ptr<OfficeConnection> in_use_;
  // running() has just started a suite, which the caller's next call, create(), returns.
  bool fresh_ = false;
};

}  // namespace

extern "C" Q_DECL_EXPORT Automation* corvane_office_automation() {
  // A suite that ends while it is written to must fail the export, not kill the program.
  [[maybe_unused]] static const auto before = std::signal(SIGPIPE, SIG_IGN);
  // Never destroyed: an export that was abandoned when the program ended may still use it.
  static auto* automation = new OfficeAutomation;
  return automation;
}
