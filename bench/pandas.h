// pandas as a peer, in a process of its own.
#pragma once

#include <QProcess>
#include <QStringList>

#include <optional>

// Runs a script of this folder, which says "ready" and then does its work once for every line that
// it is given, each time answering with the milliseconds of processor time that it took.
class Pandas {
 public:
  Pandas(const QString& script, const QStringList& arguments)
      : script_(script), arguments_(arguments) {}
  ~Pandas();
  Pandas(const Pandas&) = delete;
  Pandas& operator=(const Pandas&) = delete;

  // The time of one run; nothing where pandas is not installed. Started when first used.
  std::optional<double> run();

 private:
  bool start();
  QByteArray next_line();

  QString script_;
  QStringList arguments_;
  QProcess process_;
  std::optional<bool> ready_;
};
