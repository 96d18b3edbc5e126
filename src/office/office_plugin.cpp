// The plug-in's entry: office automation by way of LibreOffice (docs/export.md).
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

// The suite is given this time to end when the program does.
constexpr std::chrono::milliseconds end_limit(1000);

MakeApplication application_maker(std::string_view application) {
  if (application == "Excel.Application") {
    return
        [](Connection connection, bool) { return spreadsheet_application(std::move(connection)); };
  }
  if (application == "Word.Application") return word_processor_application;
  throw AutomationError("no such application");
}

// The suite has one process for all its applications. Asking it for a pipe is what starts one where
// none runs; the way to that one is kept until the program ends, which ends it as well.
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
    fresh_ = true;
    throw AutomationError("not running");
  }

  AutomationPointer create(std::string_view application, const GiveUp&) override {
    const MakeApplication make = application_maker(application);
    Connection own = own_suite();
    if (!own || !std::exchange(fresh_, false)) throw AutomationError("not started");
    return make(std::move(own), true);
  }

  std::optional<AutomationActivity> activity() const override {
    const Connection connection = in_use();
    return connection ? connection->activity() : AutomationActivity();
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
    std::packaged_task<void()> task([own] {
      if (own->alive()) own->quit();
    });
    const auto ended = task.get_future();
    std::thread(std::move(task)).detach();
    if (ended.wait_for(end_limit) != std::future_status::ready) own->abandon();
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
  }
  void forget(const Connection& connection) {
    const std::lock_guard lock(mutex_);
    if (own_suite_ == connection) own_suite_.reset();
  }

  mutable std::mutex mutex_;
  // The way to the suite that was started here.
  Connection own_suite_;
  std::weak_ptr<OfficeConnection> in_use_;
  // Started by running(), for create(), which the caller asks next.
  bool fresh_ = false;
};

}  // namespace

extern "C" Q_DECL_EXPORT Automation* corvane_office_automation() {
  // Never destroyed: an export that was left behind when the program ended may still be in it.
  static auto* automation = new OfficeAutomation;
  return automation;
}
