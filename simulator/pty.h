// What the simulator needs of a POSIX system: a pseudo-terminal and the signals that end a program.
#pragma once

#include <QByteArray>
#include <QString>

namespace simulator {

// The pair of devices. The program being tried opens device() as its serial port, which carries no
// parity. It may close and reopen the device, because the simulator keeps its own handle on it.
class Pty {
 public:
  // Throws std::runtime_error when the system gives none.
  Pty();
  ~Pty() { close(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  QString device() const { return device_; }
  // The simulator's side, to be watched for input.
  int descriptor() const { return master_; }
  // The bytes that have come; empty if there are none.
  QByteArray read();
  // Bytes that nobody reads are lost once the device's buffer is full, as on a real line.
  void write(const QByteArray& bytes);
  // Removes the device, even while a program has it open.
  void close();

 private:
  int master_ = -1;
  int slave_ = -1;
  QString device_;
};

// From now on SIGINT, SIGTERM and SIGHUP end the application's event loop with exit code 0.
void quit_on_signals();

}  // namespace simulator
