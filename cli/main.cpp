// corvane-cli: reads the recorder and its data files without a window.
#include <QGuiApplication>

#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

#include "base/errors.h"
#include "cli/arguments.h"
#include "cli/help.h"
#include "cli/interrupts.h"
#include "cli/output.h"

namespace {

constexpr int killed_by = 128;

int run(const QStringList& words) {
  const QString name = words.value(0);
  if (name.isEmpty()) {
    throw Failure(exit_status::usage, QStringLiteral("no command given; see corvane-cli --help"));
  }
  if (name == u"--help" || name == u"-h" || name == u"help") {
    print(help_of_all());
    return exit_status::fine;
  }
  if (name == u"--version") {
    print(QStringLiteral("corvane-cli " CORVANE_VERSION "\n"));
    return exit_status::fine;
  }
  const auto command = std::find_if(commands().begin(), commands().end(), [&](const Command& one) {
    return name == QString::fromLatin1(one.name);
  });
  if (command == commands().end()) {
    throw Failure(exit_status::usage,
                  QStringLiteral("there is no command \"%1\"; see corvane-cli --help").arg(name));
  }
  const Arguments arguments(*command, words.mid(1));
  if (arguments.help()) {
    print(help_of(*command));
    return exit_status::fine;
  }
  Interrupts interrupts;
  try {
    return command->run(arguments, interrupts);
  } catch (const Failure& failure) {
    if (interrupts.signal() == 0) throw;
    complain(failure.sentence());
    return killed_by + interrupts.signal();
  }
}

}  // namespace

const std::vector<Command>& commands() {
  static const std::vector<Command> all = {ports_command(),    check_command(), identify_command(),
                                           download_command(), watch_command(), export_command(),
                                           stats_command()};
  return all;
}

namespace {

// Drawing PDF pages needs fonts, but no display.
std::unique_ptr<QCoreApplication> application_for(int& argc, char** argv) {
  const bool draws =
      argc > 2 && std::any_of(argv, argv + argc, [](const char* word) {
        return QString::fromLocal8Bit(word).endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive);
      });
  if (!draws) return std::make_unique<QCoreApplication>(argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Hides Qt's warnings about a session without a desktop, which mean nothing to the user.
  const QtMessageHandler before = qInstallMessageHandler([](auto...) {});
  auto application = std::make_unique<QGuiApplication>(argc, argv);
  qInstallMessageHandler(before);
  return application;
}

}  // namespace

int main(int argc, char** argv) {
  // Reopens closed standard descriptors: a port or file with such a number would get the output.
  for (int number = 0; number <= STDERR_FILENO; ++number) {
    if (fcntl(number, F_GETFD) < 0) open("/dev/null", O_RDWR);
  }
  const auto application = application_for(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("corvane-cli"));
  QCoreApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
  try {
    return run(QCoreApplication::arguments().mid(1));
  } catch (const Failure& failure) {
    complain(failure.sentence());
    return failure.status();
  } catch (const std::exception& error) {
    complain(QString::fromLocal8Bit(error.what()));
    return exit_status::file;
  }
}
