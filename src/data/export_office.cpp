#include "data/export_office.h"

#include "data/export_progress.h"

AutomationObject* OfficeApplication::operator->() const {
  if (!object) throw AutomationError("no such application");
  return object.get();
}

OfficeApplication running_or_new(Automation& office, std::string_view application,
                                 const ExportProgress& progress) {
  OfficeApplication result;
  const auto give_up = [&progress] { return progress.stopped(); };
  skip_on_error([&] { result.object = office.running(application, give_up); });
  if (result.object || progress.stopped()) return result;
  skip_on_error([&] {
    result.object = office.create(application, give_up);
    result.created = true;
  });
  return result;
}
