#include "graph_peers.h"

bool QwtProcess::start() {
  process_.start(QStringLiteral(CORVANE_BENCH_QWT), {QString::number(noise_ ? 1 : 0)});
  return process_.waitForStarted();
}

QwtProcess::~QwtProcess() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.closeWriteChannel();
  process_.waitForFinished();
}

std::optional<double> QwtProcess::draw() {
  if (!ready_) ready_ = start();
  if (!*ready_) return std::nullopt;
  process_.write("\n");
  while (!process_.canReadLine() && process_.waitForReadyRead()) {
  }
  bool is_number = false;
  const double time = process_.readLine().trimmed().toDouble(&is_number);
  return is_number ? std::optional(time) : std::nullopt;
}
