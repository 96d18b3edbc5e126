#include "data/recording_automation.h"

#include <cmath>

namespace {

struct Shown {
  QString operator()(double value) const { return QString::number(value, 'g', 15); }
  QString operator()(const QString& value) const { return u'"' + value + u'"'; }
  QString operator()(const AutomationTable& table) const {
    QString result;
    for (std::size_t i = 0; i < table.cells.size(); ++i) {
      if (i > 0) result += i % table.columns == 0 ? QStringLiteral("; ") : QStringLiteral(", ");
      result += std::visit(*this, table.cells[i]);
    }
    return u'[' + result + u']';
  }
};

QString shown(const AutomationValue& value) {
  return std::visit(Shown(), value);
}

QString latin(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

class RecordingObject final : public AutomationObject {
 public:
  RecordingObject(RecordingAutomation& automation, const QString& name)
      : automation_(automation), name_(name) {}

  AutomationPointer get(std::string_view member, const AutomationArguments& arguments) override {
    return std::make_shared<RecordingObject>(automation_, path(member, arguments, {}));
  }

  void put(std::string_view member, const AutomationArguments& arguments,
           const AutomationValue& value) override {
    automation_.write(path(member, arguments, {}) + QStringLiteral(" = ") + shown(value));
  }

  AutomationPointer call(std::string_view member, const AutomationArguments& arguments,
                         const NamedArguments& named) override {
    automation_.write(path(member, arguments, named));
    if (member != "Add") return nullptr;
    return std::make_shared<RecordingObject>(automation_, automation_.name_of_added(name_));
  }

 private:
  QString path(std::string_view member, const AutomationArguments& arguments,
               const NamedArguments& named) const {
    QStringList parts;
    for (const AutomationValue& argument : arguments) parts << shown(argument);
    for (const NamedArgument& argument : named) {
      parts << latin(argument.name) + QStringLiteral(":=") + shown(argument.value);
    }
    const QString list =
        parts.isEmpty() ? QString() : u'(' + parts.join(QStringLiteral(", ")) + u')';
    return name_ + u'.' + latin(member) + list;
  }

  RecordingAutomation& automation_;
  QString name_;
};

}  // namespace

void RecordingAutomation::write(const QString& line) {
  if (before_line) before_line();
  lines << line;
  if (!fails_at.isEmpty() && line.contains(fails_at)) {
    fails_at.clear();
    throw AutomationError("as told");
  }
}

QString RecordingAutomation::name_of_added(const QString& collection) {
  if (collection.endsWith(QStringLiteral(".Worksheets"))) {
    return QStringLiteral("Sheet%1").arg(++sheets_);
  }
  return collection.section(u'.', -1).chopped(1);
}

AutomationPointer RecordingAutomation::running(std::string_view application, const GiveUp&) {
  write(QStringLiteral("running ") + latin(application));
  if (!runs) throw AutomationError("not running");
  return std::make_shared<RecordingObject>(*this, latin(application).section(u'.', 0, 0));
}

AutomationPointer RecordingAutomation::create(std::string_view application, const GiveUp&) {
  write(QStringLiteral("create ") + latin(application));
  if (!can_be_created) throw AutomationError("not installed");
  return std::make_shared<RecordingObject>(*this, latin(application).section(u'.', 0, 0));
}
