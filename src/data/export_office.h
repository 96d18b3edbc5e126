// What both office exports share: the application, and the number of samples per call.
#pragma once

#include <string_view>

#include "data/automation.h"

class ExportProgress;

struct OfficeApplication {
  // Null when none runs and none can be created.
  AutomationPointer object;
  // Whether the application was started for the export.
  bool created = false;

  // Throws AutomationError when there is no application.
  AutomationObject* operator->() const;
};

// Returns the running application of that name, or else a new one; `object` is null if both fail.
OfficeApplication running_or_new(Automation& office, std::string_view application,
                                 const ExportProgress& progress);

// Samples per call to the application.
inline constexpr int samples_per_call = 500;
