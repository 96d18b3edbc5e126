#include "pandas.h"

#include <stdexcept>

namespace {

constexpr int timeout_ms = 60'000;

}  // namespace

bool Pandas::start() {
  // The system's Python first, because it has the system's pandas.
  for (const char* python : {"/usr/bin/python3", "python3"}) {
    process_.start(QString::fromLatin1(python),
                   QStringList{QStringLiteral(CORVANE_BENCH_DIR "/") + script_} + arguments_);
    if (next_line() == "ready\n") return true;
    process_.waitForFinished();
  }
  return false;
}

Pandas::~Pandas() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.closeWriteChannel();
  process_.waitForFinished();
}

std::optional<double> Pandas::run() {
  if (!ready_) ready_ = start();
  if (!*ready_) return std::nullopt;
  process_.write("\n");
  bool is_number = false;
  const double time = next_line().trimmed().toDouble(&is_number);
  if (!is_number) throw std::runtime_error("pandas could not do its work");
  return time;
}

// Empty if no line comes in time.
QByteArray Pandas::next_line() {
  while (!process_.canReadLine() && process_.waitForReadyRead(timeout_ms)) {
  }
  return process_.readLine();
}
