// Office automation from the plug-in corvane_office, for systems that have no office automation of
// their own.
#pragma once

#include <QLibrary>

#include <atomic>

#include "data/automation.h"

class AutomationPlugin final : public Automation {
 public:
  // Loads the plug-in from `folder` when the first application is requested. Without the plug-in or
  // the office suite that it needs, running() and create() throw.
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
  // Null until the first application is requested.
  std::atomic<Automation*> loaded_ = nullptr;
};

// The plug-in's only function, with C linkage: returns an Automation that is never destroyed.
inline constexpr const char* office_plugin_entry = "corvane_office_automation";
using OfficePluginEntry = Automation* (*)();
