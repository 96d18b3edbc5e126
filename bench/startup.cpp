// Benchmark from the start of the process to a painted main window, against a bare one with about
// the same menus and toolbar.
#include <QProcess>

#include <sys/resource.h>

#include "suite.h"

namespace {

double children_milliseconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto of = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  return of(usage.ru_utime) + of(usage.ru_stime);
}

// The processor time of a program that ends once its window is painted.
std::optional<double> run(const char* program) {
  const double before = children_milliseconds();
  QProcess process;
  process.setStandardErrorFile(QProcess::nullDevice());
  process.start(QString::fromLocal8Bit(program), {});
  if (!process.waitForFinished() || process.exitCode() != 0) return std::nullopt;
  return children_milliseconds() - before;
}

}  // namespace

void startup_benchmarks(Suite& suite) {
  suite.compare(
      "start to a shown main window", [] { return run(CORVANE_BENCH_STARTUP); },
      "bare Qt main window", [] { return run(CORVANE_BENCH_BARE_WINDOW); }, 1.5);
}
