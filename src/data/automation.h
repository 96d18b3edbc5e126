// Office automation: the objects of an office program, reached only by the names of their members.
// Windows has its own; elsewhere a plug-in maps the objects onto the office suite LibreOffice
// (docs/export.md).
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

// There is no such application or member, or the application could not do what it was asked.
class AutomationError : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

using AutomationCell = std::variant<double, QString>;

// A block of cells, row by row. A double becomes a number cell, a text becomes a text cell.
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
// The application is released with the last pointer to any of its objects.
using AutomationPointer = std::shared_ptr<AutomationObject>;

// Every function throws AutomationError.
class AutomationObject {
 public:
  AutomationObject() = default;
  AutomationObject(const AutomationObject&) = delete;
  AutomationObject& operator=(const AutomationObject&) = delete;
  virtual ~AutomationObject() = default;

  // Returns the object that a property holds, never null.
  virtual AutomationPointer get(std::string_view member, const AutomationArguments& arguments) = 0;
  AutomationPointer get(std::string_view member) { return get(member, {}); }

  // Sets a property. `arguments` select one of several, such as the cell at a row and a column.
  virtual void put(std::string_view member, const AutomationArguments& arguments,
                   const AutomationValue& value) = 0;
  void put(std::string_view member, const AutomationValue& value) { put(member, {}, value); }

  // Calls a method and returns the object that it returns, or null when it returns none.
  virtual AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                                 const NamedArguments& named) = 0;
  AutomationPointer call(std::string_view member, const AutomationArguments& arguments = {}) {
    return call(member, arguments, {});
  }
};

// Signs that an application makes progress with a request.
struct AutomationActivity {
  // Calls that have returned, plus blocks of bytes that have arrived.
  std::int64_t answers = 0;
  // Processor time that the application's processes have used, in milliseconds.
  std::int64_t processor_ms = 0;
};

// Finds and starts office applications. One thread at a time uses them; a second one may watch.
class Automation {
 public:
  Automation() = default;
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;
  virtual ~Automation() = default;

  // Called repeatedly while an application starts; true ends the start at once.
  using GiveUp = std::function<bool()>;

  // Returns the application of that programmatic name that already runs. Throws AutomationError
  // when none runs.
  virtual AutomationPointer running(std::string_view application, const GiveUp& give_up) = 0;

  // Starts a new application. Throws AutomationError when it cannot be started.
  virtual AutomationPointer create(std::string_view application, const GiveUp& give_up) = 0;

  // Returns the activity of the application that another thread uses. Empty where it cannot be
  // known, and while that thread does not wait for the application.
  virtual std::optional<AutomationActivity> activity() const { return std::nullopt; }
  // Makes the other thread's current call fail, and all its later calls. Ends an application that
  // create() started, unless the user may have something open in it.
  virtual void give_up() {}

  // Called when the program ends. Ends the applications that create() started and that still run,
  // unless the user has something open in them. Returns within a second.
  virtual void end_own_applications() {}
};

// The automation of this computer. Its libraries are loaded at the first use. Where they are
// missing, running() and create() throw.
Automation& office_automation();
