// Office applications that do nothing but write down, line by line, what is asked of them.
#pragma once

#include <QStringList>

#include <functional>

#include "data/automation.h"

// "Sheet1.Columns(2).ColumnWidth = 15", "Workbook.SaveAs(filename:="out.xls")": objects are named
// by the way to them, what Add returns by its kind, sheets with a number.
class RecordingAutomation final : public Automation {
 public:
  QStringList fails = {QStringLiteral("running")};  // every line that contains one of these
  // Run before each line is written, in the thread of the export.
  std::function<void()> before_line;
  QStringList lines;

  AutomationPointer running(std::string_view application, const GiveUp&) override {
    return start("running ", application);
  }
  AutomationPointer create(std::string_view application, const GiveUp&) override {
    return start("create ", application);
  }

 private:
  struct Object;

  void write(const QString& line) {
    if (before_line) before_line();
    lines << line;
    for (const QString& text : fails) {
      if (line.contains(text)) throw AutomationError("as told");
    }
  }
  AutomationPointer start(const char* how, std::string_view application);

  int sheets_ = 0;
};

struct RecordingAutomation::Object final : AutomationObject {
  Object(RecordingAutomation& office_used, const QString& way) : office(office_used), name(way) {}

  AutomationPointer get(std::string_view member, const AutomationArguments& arguments) override {
    return std::make_shared<Object>(office, path(member, arguments, {}));
  }
  void put(std::string_view member, const AutomationArguments& arguments,
           const AutomationValue& value) override {
    office.write(path(member, arguments, {}) + QStringLiteral(" = ") + shown(value));
  }
  AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                         const NamedArguments& named) override {
    office.write(path(member, arguments, named));
    if (member != "Add") return nullptr;
    const QString kind = name.section(u'.', -1).chopped(1);
    if (kind != u"Worksheet") return std::make_shared<Object>(office, kind);
    return std::make_shared<Object>(office, QStringLiteral("Sheet%1").arg(++office.sheets_));
  }

  static QString shown(double value) { return QString::number(value, 'g', 15); }
  static QString shown(const QString& value) { return u'"' + value + u'"'; }
  static QString shown(const AutomationTable& table) {
    QString cells;
    for (std::size_t i = 0; i < table.cells.size(); ++i) {
      cells += shown(table.cells[i]) + ((i + 1) % table.columns == 0 ? u';' : u' ');
    }
    return u'[' + cells + u']';
  }
  template <class... Held>
  static QString shown(const std::variant<Held...>& value) {
    return std::visit([](const auto& held) { return shown(held); }, value);
  }
  static QString latin(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  }
  QString path(std::string_view member, const AutomationArguments& arguments,
               const NamedArguments& named) const {
    QStringList parts;
    for (const auto& argument : arguments) parts << shown(argument);
    for (const auto& argument : named)
      parts << latin(argument.name) + QStringLiteral(":=") + shown(argument.value);
    const QString list = QStringLiteral("(%1)").arg(parts.join(QStringLiteral(", ")));
    return name + u'.' + latin(member) + (parts.isEmpty() ? QString() : list);
  }

  RecordingAutomation& office;
  QString name;
};

inline AutomationPointer RecordingAutomation::start(const char* how, std::string_view application) {
  const QString name = Object::latin(application);
  write(how + name);
  return std::make_shared<Object>(*this, name.section(u'.', 0, 0));
}
