// A running corvane-simulator.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// Starts the simulator with these options; the destructor ends it as a user would, by SIGTERM.
class SimulatorProcess {
 public:
  explicit SimulatorProcess(const QStringList& options) {
    process_.start(QStringLiteral(CORVANE_SIMULATOR), options);
  }
  ~SimulatorProcess() { stop(); }

  // Waits until the device and its links exist; false if the simulator ends or hangs instead.
  bool wait_ready() {
    while (process_.canReadLine() || process_.waitForReadyRead(patience_ms)) {
      if (process_.readLine().trimmed() == "ready") return true;
    }
    return false;
  }

  // Waits until it ends by itself; gives its exit code, or -1 if it crashed or still runs.
  int wait_end() {
    const bool ended =
        process_.state() == QProcess::NotRunning || process_.waitForFinished(patience_ms);
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }
  // Ends it by SIGTERM and gives what wait_end() does.
  int stop() {
    process_.terminate();
    return wait_end();
  }
  QString errors() { return QString::fromLocal8Bit(process_.readAllStandardError()); }

 private:
  // Starting and ending take milliseconds; the rest is for a computer busy with other tests.
  static constexpr int patience_ms = 20'000;

  QProcess process_;
};
