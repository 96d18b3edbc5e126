#include "data/automation_plugin.h"

#include <QCoreApplication>

AutomationPlugin::AutomationPlugin(const QString& folder)
    : library_(folder + QStringLiteral("/corvane_office")) {}

Automation& AutomationPlugin::load() {
  const auto entry = reinterpret_cast<OfficePluginEntry>(library_.resolve(office_plugin_entry));
  if (!entry) throw AutomationError("no office plug-in");
  Automation* const automation = entry();
  loaded_ = automation;
  return *automation;
}

AutomationPointer AutomationPlugin::running(std::string_view application, const GiveUp& give_up) {
  return load().running(application, give_up);
}

AutomationPointer AutomationPlugin::create(std::string_view application, const GiveUp& give_up) {
  return load().create(application, give_up);
}

std::optional<AutomationActivity> AutomationPlugin::activity() const {
  const Automation* const automation = loaded_;
  return automation ? automation->activity() : AutomationActivity();
}

void AutomationPlugin::give_up() {
  if (Automation* const automation = loaded_) automation->give_up();
}

void AutomationPlugin::end_own_applications() {
  if (Automation* const automation = loaded_) automation->end_own_applications();
}

Automation& office_automation() {
  // Never destroyed: an export that was abandoned when the program ended may still use it.
  static auto& plugin = *new AutomationPlugin(QCoreApplication::applicationDirPath());
  return plugin;
}
