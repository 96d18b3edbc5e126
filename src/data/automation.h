// Office automation: objects of an office program, known only by the names of their members. On
// Windows it is the system's own; elsewhere a plug-in stands in that knows the office suite
// LibreOffice (docs/export.md).
#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "base/errors.h"

// No such application or member, or the application could not do what was asked of it.
class AutomationError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

using AutomationCell = std::variant<double, QString>;

// A block of cells, row after row; a number becomes a number cell.
struct AutomationTable {
  std::size_t columns = 0;
  std::vector<AutomationCell> cells;
  std::size_t rows() const { return columns == 0 ? 0 : cells.size() / columns; }
};

using AutomationValue = std::variant<double, QString, AutomationTable>;
using AutomationArguments = std::vector<AutomationValue>;
struct NamedArgument {
  std::string_view name;
  AutomationValue value;
};
using NamedArguments = std::vector<NamedArgument>;

class AutomationObject;
// Letting go of the last pointer to any object of an application lets go of the application.
using AutomationPointer = std::shared_ptr<AutomationObject>;

// Every function throws AutomationError.
class AutomationObject {
 public:
  AutomationObject() = default;
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;
  virtual ~AutomationObject() = default;

  // The object that a property holds; never null.
  virtual AutomationPointer get(std::string_view member, const AutomationArguments& arguments) = 0;
  AutomationPointer get(std::string_view member) { return get(member, {}); }

  // Sets a property; `arguments` say which one where there are many, such as a row and a column.
  virtual void put(std::string_view member, const AutomationArguments& arguments,
                   const AutomationValue& value) = 0;
  void put(std::string_view member, const AutomationValue& value) { put(member, {}, value); }

  // Calls a method. Gives the object that it returns, null when it returns none.
  virtual AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                                 const NamedArguments& named) = 0;
  AutomationPointer call(std::string_view member, const AutomationArguments& arguments = {}) {
    return call(member, arguments, {});
  }
};

// What shows that an application gets on with what it was asked.
struct AutomationActivity {
  // Calls that came back, blocks of bytes that arrived.
  std::int64_t answers = 0;
  // Taken by the application's processes, in milliseconds.
  std::int64_t processor_ms = 0;
};

// Where the applications come from. One thread at a time works with them; another one may watch.
class Automation {
 public:
  Automation() = default;
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;
  virtual ~Automation() = default;

  // Asked now and then while an application starts; true ends the start at once.
  using GiveUp = std::function<bool()>;

  // The application of the programmatic name that runs already. Throws AutomationError when none
  // does.
  virtual AutomationPointer running(std::string_view application, const GiveUp& give_up) = 0;

  // A new one. Throws AutomationError when it cannot be started.
  virtual AutomationPointer create(std::string_view application, const GiveUp& give_up) = 0;

  // How far the application has come with which another thread works. Nothing where that cannot be
  // known, or where the thread does not wait for the application.
  virtual std::optional<AutomationActivity> activity() const { return std::nullopt; }
  // Makes the call fail that another thread has under way, and all its later ones. An application
  // that create() has started is ended, unless the user may have something open in it.
  virtual void give_up() {}

  // When the program ends: ends what create() has started and still runs, unless the user has
  // something open in it. Returns within a second.
  virtual void end_own_applications() {}
};

// The automation of this computer. What it needs is loaded at the first use; where that is missing
// no application runs and none can be created.
Automation& office_automation();
