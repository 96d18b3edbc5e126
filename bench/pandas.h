// pandas as a peer, in a process of its own.
#pragma once

#include <QProcess>
#include <QStringList>

#include <optional>

// Runs a script of this folder. It prints "ready"; then, for every line that it reads, it does its
// work once and prints the processor time in milliseconds.
class Pandas {
 public:
  Pandas(const QString& script, const QStringList& arguments)
      : script_(script), arguments_(arguments) {}
  ~Pandas();
  Pandas(const Pandas&) = delete;
  Pandas& operator=(const Pandas&) = delete;

  // The milliseconds of one run; nothing without pandas. The first call starts the script.
  std::optional<double> run();

 private:
  bool start();
  QByteArray next_line();

  QString script_;
  QStringList arguments_;
  QProcess process_;
  std::optional<bool> ready_;
};
