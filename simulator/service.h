// Runs a recorder on a pseudo-terminal in real time.
#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include "simulator/line.h"
#include "simulator/links.h"
#include "simulator/options.h"
#include "simulator/pty.h"

namespace simulator {

// From construction to destruction the recorder is on the line. Ends the application's event loop
// when a fault unplugs it.
class Service : public QObject {
  Q_OBJECT
 public:
  // Throws std::runtime_error when the pseudo-terminal, a link or the log file cannot be made.
  explicit Service(const Options& options);

  QString device() const { return pty_.device(); }

 private:
  void receive();
  void transmit();
  void wait_for_line();
  void unplug();
  void log(char direction, const QByteArray& frame, const QString& remark);

  QDateTime now() const { return began_.addMSecs(running_.elapsed()); }
  qint64 now_us() const { return running_.nsecsElapsed() / 1000; }

  // The wall time at the start. The time since then comes from a clock that nobody sets.
  QDateTime began_;
  QElapsedTimer running_;
  QFile log_;
  Pty pty_;
  Links links_;
  Line line_;
  Recorder recorder_;
  QSocketNotifier input_;
  QTimer line_timer_;
};

}  // namespace simulator
