#include "data/automation_plugin.h"

#include <QCoreApplication>

AutomationPlugin::AutomationPlugin(const QString& folder)
    : library_(folder + QStringLiteral("/corvane_office")) {}

Automation& AutomationPlugin::loaded() {
  const auto entry = reinterpret_cast<OfficePluginEntry>(library_.resolve(office_plugin_entry));
  if (!entry) throw AutomationError("no office plug-in");
  return *entry();
}

AutomationPointer AutomationPlugin::running(std::string_view application, const GiveUp& give_up) {
  return loaded().running(application, give_up);
}

AutomationPointer AutomationPlugin::create(std::string_view application, const GiveUp& give_up) {
  return loaded().create(application, give_up);
}

Automation& office_automation() {
  // Never destroyed: an export that was left behind when the program ended may still be in it.
  static auto& plugin = *new AutomationPlugin(QCoreApplication::applicationDirPath());
  return plugin;
}
