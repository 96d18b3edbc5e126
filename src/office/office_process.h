// The office suite's processes, as the system knows them.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

// The process that serves a pipe, and those that were started to have one.
class OfficeProcess {
 public:
  // Starts the suite with `arguments`; it runs on by itself. A process of this user that runs
  // already takes the arguments over, and the new one ends. Throws AutomationError.
  void start(const QStringList& arguments);

  // Looks who serves the pipe of that path.
  void find_server(const QString& pipe_path);
  // Whether the one that serves it was started here.
  bool started() const { return started_; }
  // Whether what was started here still runs.
  bool running() const;

  // Waits for the end of what was started here; false when it still runs after `milliseconds`.
  bool wait_for_end(int milliseconds) const;
  // Ends what was started here: asks, and forces what does not follow soon.
  void end() const;

  // The processor time in milliseconds that all of these processes have taken; 0 where the system
  // does not tell.
  std::int64_t processor_ms() const;

 private:
  qint64 process_ = 0;
  // All that was started here is in one process group.
  qint64 group_ = 0;
  qint64 server_ = 0;
  bool started_ = false;
};
