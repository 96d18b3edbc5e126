// The plug-in's entry: office automation by way of LibreOffice (docs/export.md).
#include "data/automation_plugin.h"
#include "office/office_connection.h"
#include "office/office_spreadsheet.h"
#include "office/office_word_processor.h"

namespace {

using MakeApplication = AutomationPointer (*)(std::shared_ptr<OfficeConnection>);

MakeApplication application_maker(std::string_view application) {
  if (application == "Excel.Application") return spreadsheet_application;
  if (application == "Word.Application") return word_processor_application;
  throw AutomationError("no such application");
}

// The suite has one process for all its applications. Asking it for a pipe is what starts one where
// none runs; that one is kept for create(), which is what the caller asks for next.
class OfficeAutomation final : public Automation {
 public:
  AutomationPointer running(std::string_view application, const GiveUp& give_up) override {
    const MakeApplication make = application_maker(application);
    auto connection = OfficeConnection::open(give_up);
    if (connection->started()) {
      fresh_ = std::move(connection);
      throw AutomationError("not running");
    }
    return make(std::move(connection));
  }

  AutomationPointer create(std::string_view application, const GiveUp& give_up) override {
    const MakeApplication make = application_maker(application);
    auto connection = std::exchange(fresh_, nullptr);
    return make(connection ? std::move(connection) : OfficeConnection::open(give_up));
  }

 private:
  std::shared_ptr<OfficeConnection> fresh_;
};

}  // namespace

extern "C" Q_DECL_EXPORT Automation* corvane_office_automation() {
  // Never destroyed: an export that was left behind when the program ended may still be in it.
  static auto* automation = new OfficeAutomation;
  return automation;
}
