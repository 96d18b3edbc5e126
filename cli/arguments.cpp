#include "cli/arguments.h"

#include "base/numbers.h"
#include "base/times.h"

void refuse_usage(const Command& command, const QString& sentence) {
  throw Failure(exit_status::usage, QStringLiteral("%1; see corvane-cli %2 --help")
                                        .arg(sentence, QString::fromLatin1(command.name)));
}

Arguments::Arguments(const Command& command, const QStringList& words) : command_(command) {
  for (const Option& option : command.options) {
    const QStringList names = QString::fromLatin1(option.name).split(u'|');
    parser_.addOption({names, {}, QString::fromLatin1(option.value)});
  }
  parser_.addOption({{QStringLiteral("h"), QStringLiteral("help")}, {}});
  if (!parser_.parse(QStringList{QStringLiteral("corvane-cli")} + words)) {
    QString error = parser_.errorText();
    if (error.endsWith(u'.')) error.chop(1);
    error[0] = error[0].toLower();
    refuse(error);
  }
  if (help()) return;
  const QStringList files = parser_.positionalArguments();
  if (files.size() > command.files) {
    refuse(QStringLiteral("\"%1\" is one argument too many").arg(files[command.files]));
  }
  if (files.size() < command.files) refuse(QStringLiteral("the data file is missing"));
}

void Arguments::refuse_value(const char* option, const QString& wanted) const {
  refuse(QStringLiteral("--%1: \"%2\" is not %3")
             .arg(QString::fromLatin1(option), text(option), wanted));
}

std::optional<int> Arguments::integer(const char* option, int least, int most) const {
  if (!is_set(option)) return std::nullopt;
  bool ok = false;
  const int value = text(option).toInt(&ok);
  if (ok && value >= least && value <= most) return value;
  refuse_value(option, QStringLiteral("a whole number from %1 to %2").arg(least).arg(most));
}

std::optional<double> Arguments::decimal(const char* option, double least, double most) const {
  if (!is_set(option)) return std::nullopt;
  const auto value = number_of(text(option));
  if (value && *value >= least && *value <= most) return *value;
  refuse_value(option, QStringLiteral("a number from %1 to %2").arg(least).arg(most));
}

std::optional<QDateTime> Arguments::time(const char* option, bool last) const {
  if (!is_set(option)) return std::nullopt;
  QString stamp = text(option).replace(u'T', u' ');
  const QString rest = last ? QStringLiteral(" 23:59:59") : QStringLiteral(" 00:00:00");
  const qsizetype complete = stamp.size() == 10 ? 0 : 6;  // characters of `rest` that it has
  if (stamp.size() == 10 || stamp.size() == 16) stamp += rest.mid(complete);
  const QDateTime time = stamp_time(stamp);
  if (time.isValid()) return time;
  refuse_value(option, QStringLiteral("a time YYYY-MM-DD HH:MM:SS"));
}

std::optional<int> Arguments::port() const {
  if (!is_set("port") || text("port") == u"auto") return std::nullopt;
  bool ok = false;
  const int number = text("port").toInt(&ok);
  if (ok && number >= 1 && number <= 8) return number;
  refuse_value("port", QStringLiteral("a port from 1 to 8 or auto"));
}
