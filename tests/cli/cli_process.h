// The real corvane-cli in its own program folder, with a simulated recorder on its COM1.
#pragma once

#include "support/main_window.h"
#include "support/simulator_process.h"

struct Ran {
  int status = -1;
  QString out;
  QString errors;
};

class CliWorld {
 public:
  CliWorld() {
    make_file(path("device.txt"), MainWindow::device_file);
    QFile::copy(QStringLiteral(CORVANE_CLI), path("corvane-cli"));
  }

  QString path(const QString& name) const { return folder_.filePath(name); }
  QStringList files(const QString& pattern) const {
    return QDir(folder_.path()).entryList({pattern}, QDir::AllEntries | QDir::Hidden);
  }
  QByteArray contents(const QString& name) const { return ::contents(path(name)); }

  bool plug_in(const QString& options, const QString& port = "com1") {
    simulator_.reset();
    simulator_ = std::make_unique<SimulatorProcess>(QStringList{"--link", path(port)} +
                                                    QProcess::splitCommand(options));
    return simulator_->wait_ready();
  }
  void unplug() { simulator_.reset(); }

  // Starts `program` in the program's folder, so that tests can use bare file names.
  void start(QProcess& process, const QString& program, const QStringList& arguments) const {
    process.setWorkingDirectory(folder_.path());
    process.start(program, arguments);
  }
  void start(QProcess& process, const QString& words) const {
    start(process, path("corvane-cli"), QProcess::splitCommand(words));
  }
  static Ran end(QProcess& process) {
    if (!process.waitForFinished(60'000)) return {-1, {}, QStringLiteral("still runs")};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
  }
  Ran run(const QString& words) const {
    QProcess process;
    start(process, words);
    return end(process);
  }
  Ran shell(const QString& script) const {
    QProcess process;
    start(process, QStringLiteral("bash"), {QStringLiteral("-c"), script});
    return end(process);
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<SimulatorProcess> simulator_;
};
