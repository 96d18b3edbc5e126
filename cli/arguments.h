// The arguments of a command.
#pragma once

#include <QCommandLineParser>
#include <QDateTime>

#include <optional>

#include "cli/command.h"

[[noreturn]] void refuse_usage(const Command& command, const QString& sentence);

class Arguments {
 public:
  // Throws Failure for an option that the command does not have, and for too few or too many files.
  Arguments(const Command& command, const QStringList& words);

  bool help() const { return parser_.isSet(QStringLiteral("help")); }
  bool is_set(const char* option) const { return parser_.isSet(QString::fromLatin1(option)); }
  QString text(const char* option) const { return parser_.value(QString::fromLatin1(option)); }
  QStringList texts(const char* option) const {
    return parser_.values(QString::fromLatin1(option));
  }
  QString file() const { return parser_.positionalArguments().value(0); }

  // Each throws Failure for an invalid value, and returns nothing when the option is not given.
  std::optional<int> integer(const char* option, int least, int most) const;
  std::optional<double> decimal(const char* option, double least, double most) const;
  // "YYYY-MM-DD", "YYYY-MM-DD HH:MM" or "YYYY-MM-DD HH:MM:SS"; a T may replace the blank. Without a
  // time or seconds it means the first second of that day or minute, or with `last` the last one.
  std::optional<QDateTime> time(const char* option, bool last) const;
  // 1 to 8, or nothing for "auto".
  std::optional<int> port() const;

  [[noreturn]] void refuse(const QString& sentence) const { refuse_usage(command_, sentence); }

 private:
  [[noreturn]] void refuse_value(const char* option, const QString& wanted) const;

  const Command& command_;
  QCommandLineParser parser_;
};
