// The real corvane-simulator, running.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// Starts it with the options given; the destructor ends it as a user would, by SIGTERM.
class SimulatorProcess {
 public:
  explicit SimulatorProcess(const QStringList& options);
  ~SimulatorProcess();

  // Waits until the device and its links stand; false when it ends instead.
  bool wait_ready();
  // Its pseudo-terminal, once it is ready.
  QString device() const { return device_; }

  // Waits until it has ended by itself; its exit code, or -1 when it crashed or still runs.
  int wait_end();
  // Ends it by SIGTERM and gives what wait_end() does.
  int stop();
  QString errors();

 private:
  QProcess process_;
  QString device_;
};
