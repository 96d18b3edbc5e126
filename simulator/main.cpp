#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <stdexcept>

#include "simulator/options.h"
#include "simulator/pty.h"
#include "simulator/service.h"

namespace {

constexpr int failed = 1;
constexpr int misused = 2;

int complain(const QString& text, int exit_code) {
  std::fprintf(stderr, "corvane-simulator: %s\n", qPrintable(text));
  if (exit_code == misused) std::fputs("Try corvane-simulator --help.\n", stderr);
  return exit_code;
}

// The program that started this one waits for these lines, so they are flushed at once.
void announce(const simulator::Service& service, const QStringList& links) {
  std::printf("device %s\n", qPrintable(service.device()));
  for (const QString& link : links) std::printf("link %s\n", qPrintable(link));
  std::puts("ready");
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("corvane-simulator"));
  QCoreApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));

  QCommandLineParser parser;
  simulator::describe_options(parser);
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  if (!parser.parse(application.arguments())) return complain(parser.errorText(), misused);
  if (parser.isSet(help)) parser.showHelp();
  if (parser.isSet(version)) parser.showVersion();

  try {
    const simulator::Options options = simulator::options_from(parser);
    // The reader of the output can go away. That must not end the program before it clears up.
    std::signal(SIGPIPE, SIG_IGN);
    simulator::quit_on_signals();
    simulator::Service service(options);
    announce(service, options.links);
    return application.exec();
  } catch (const simulator::OptionError& error) {
    return complain(QString::fromUtf8(error.what()), misused);
  } catch (const std::runtime_error& error) {
    return complain(QString::fromUtf8(error.what()), failed);
  }
}
