// What both office exports begin and end with.
#pragma once

#include <string_view>

#include "data/automation.h"

class ExportProgress;

struct OfficeApplication {
  // Null when none runs and none can be created.
  AutomationPointer object;
  // Whether it was started for the export.
  bool created = false;

  // Throws AutomationError for an application that is not there.
  AutomationObject* operator->() const;
};

// The running application of that name, else a new one; failures are ignored.
OfficeApplication running_or_new(Automation& office, std::string_view application,
                                 const ExportProgress& progress);

// The number of samples that go to the application in one call.
inline constexpr int samples_per_call = 500;
