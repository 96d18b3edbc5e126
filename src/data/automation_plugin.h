// Office automation out of the plug-in corvane_office, which stands for what the system itself
// does not have.
#pragma once

#include <QLibrary>

#include <atomic>

#include "data/automation.h"

class AutomationPlugin final : public Automation {
 public:
  // Looks for the plug-in in `folder` when the first application is asked for. Without it, or
  // where the office suite that it needs is missing, no application runs and none can be created.
  explicit AutomationPlugin(const QString& folder);

  AutomationPointer running(std::string_view application, const GiveUp& give_up) override;
  AutomationPointer create(std::string_view application, const GiveUp& give_up) override;
  std::optional<AutomationActivity> activity() const override;
  void give_up() override;
  void end_own_applications() override;

 private:
  Automation& load();

  // Never unloaded: the office suite's libraries cannot be.
  QLibrary library_;
  // Null until the first application is asked for.
  std::atomic<Automation*> loaded_ = nullptr;
};

// The plug-in's one function, under C linkage: an Automation that lives as long as the program.
inline constexpr const char* office_plugin_entry = "corvane_office_automation";
using OfficePluginEntry = Automation* (*)();
