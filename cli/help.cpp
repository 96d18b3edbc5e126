#include "cli/help.h"

#include "cli/command.h"

namespace {

constexpr int column = 22;
constexpr qsizetype width = 79;

// Wraps at the terminal's usual width; indents all lines but the first by `indent` blanks.
QString wrapped(const QString& text, int indent) {
  QString lines;
  qsizetype length = indent;
  for (const QString& word : text.simplified().split(u' ')) {
    const bool fits = length + 1 + word.size() <= width;
    if (!lines.isEmpty()) lines += fits ? QStringLiteral(" ") : u'\n' + QString(indent, u' ');
    length = fits && !lines.isEmpty() ? length + 1 + word.size() : indent + word.size();
    lines += word;
  }
  return lines + u'\n';
}

QString two_columns(const QString& left, const QString& right) {
  return QStringLiteral("  ") + left.leftJustified(column - 2) + wrapped(right, column);
}

QString option_head(const Option& option) {
  const QStringList names = QString::fromLatin1(option.name).split(u'|');
  QString head = names.size() > 1 ? QStringLiteral("-%1, --%2").arg(names[0], names[1])
                                  : QStringLiteral("--") + names[0];
  if (option.value) head += u' ' + QString::fromLatin1(option.value);
  return head;
}

}  // namespace

QString help_of_all() {
  QString text = QStringLiteral(
      "Usage: corvane-cli COMMAND [OPTION]...\n"
      "\n"
      "Reads a Corvane recorder on a serial port, and its data files, without a window.\n"
      "\n"
      "Commands:\n");
  for (const Command& command : commands()) {
    text += two_columns(QString::fromLatin1(command.name), QString::fromLatin1(command.summary));
  }
  return text +
         QStringLiteral(
             "\n"
             "corvane-cli COMMAND --help says more; corvane-cli --version gives the "
             "version.\n"
             "\n"
             "Exit status: 0 fine, 1 wrong usage, 2 no recorder or no readings, 3 a file\n"
             "that cannot be read or written, 4 a reading out of range, 128 + n signal n.\n");
}

QString help_of(const Command& command) {
  QString text = QStringLiteral("Usage: corvane-cli %1 %2\n\n%3\nOptions:\n")
                     .arg(QString::fromLatin1(command.name), QString::fromLatin1(command.arguments),
                          wrapped(QString::fromUtf8(command.details), 0));
  for (const Option& option : command.options) {
    const QString head = option_head(option);
    // An option head that is too long for its column gets a line of its own.
    const bool fits = head.size() + 2 < column;
    if (!fits) text += QStringLiteral("  ") + head + u'\n';
    text += two_columns(fits ? head : QString(), QString::fromUtf8(option.help));
  }
  return text + two_columns(QStringLiteral("-h, --help"), QStringLiteral("Shows this."));
}
