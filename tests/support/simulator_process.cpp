#include "support/simulator_process.h"

namespace {

// Starts and ends take milliseconds; this is for a computer busy with other tests.
constexpr int patience_ms = 20'000;

}  // namespace

SimulatorProcess::SimulatorProcess(const QStringList& options) {
  process_.start(QStringLiteral(CORVANE_SIMULATOR), options);
}

SimulatorProcess::~SimulatorProcess() {
  if (process_.state() != QProcess::NotRunning) stop();
}

bool SimulatorProcess::wait_ready() {
  const QString device = QStringLiteral("device ");
  while (process_.canReadLine() || process_.waitForReadyRead(patience_ms)) {
    while (process_.canReadLine()) {
      const QString line = QString::fromLocal8Bit(process_.readLine()).trimmed();
      if (line.startsWith(device)) device_ = line.mid(device.size());
      if (line == u"ready") return true;
    }
  }
  return false;
}

int SimulatorProcess::wait_end() {
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(patience_ms)) return -1;
  return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

int SimulatorProcess::stop() {
  process_.terminate();
  return wait_end();
}

QString SimulatorProcess::errors() {
  return QString::fromLocal8Bit(process_.readAllStandardError());
}
