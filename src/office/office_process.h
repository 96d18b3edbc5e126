// The office suite's processes, as seen by the operating system.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

// The process that serves the pipe, and the processes that were started here to get one.
class OfficeProcess {
 public:
  // Starts the suite with `arguments` as an independent process. If this user already has an office
  // process, that one takes over the arguments and the new one ends. Throws AutomationError.
  void start(const QStringList& arguments);

  // Finds the process that serves the pipe at `pipe_path`.
  void find_server(const QString& pipe_path);
  // Whether the process that serves the pipe was started here.
  bool started() const { return started_; }
  // Whether a process that was started here still runs.
  bool running() const;

  // Waits until what was started here ends. Returns false if it still runs after `milliseconds`.
  bool wait_for_end(int milliseconds) const;
  // Ends what was started here: with SIGTERM first, after 300 ms with SIGKILL.
  void end() const;

  // The processor time of all these processes in milliseconds; 0 where the system does not report
  // it.
  std::int64_t processor_ms() const;

 private:
  qint64 process_ = 0;
  // The process group of everything started here; 0 if there is none of its own.
  qint64 group_ = 0;
  qint64 server_ = 0;
  bool started_ = false;
};
