// The office suite for tests, with a user profile of its own, so that nothing of the user's is
// touched and nothing is left behind.
#pragma once

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <signal.h>

#include "support/runner.h"

#ifndef CORVANE_OFFICE_PROGRAM
#define CORVANE_OFFICE_PROGRAM ""
#endif

// While this object lives, every office process that this program starts uses the profile and shows
// no windows. end() ends those that still run.
class OfficeSuite {
 public:
  OfficeSuite() {
    QDir().mkdir(temporary());
    qputenv("TMPDIR", temporary().toUtf8());
    qputenv("XDG_CONFIG_HOME", profile_.path().toUtf8());
    qputenv("SAL_USE_VCLPLUGIN", "svp");
  }
  ~OfficeSuite() {
    end();
    for (const char* name : {"TMPDIR", "XDG_CONFIG_HOME", "SAL_USE_VCLPLUGIN"}) qunsetenv(name);
  }
  OfficeSuite(const OfficeSuite&) = delete;
  OfficeSuite& operator=(const OfficeSuite&) = delete;

  // Sends a signal to every office process and gives their number.
  int signal(int number) const {
    const auto all = processes();
    for (const qint64 process : all) kill(static_cast<pid_t>(process), number);
    return static_cast<int>(all.size());
  }

  void end() const {
    signal(SIGTERM);
    signal(SIGCONT);
    (void)QTest::qWaitFor([this] { return processes().isEmpty(); }, patience_ms);
    for (const QString& pipe : left_pipes()) QFile::remove("/tmp/" + pipe);
    QDir(temporary()).removeRecursively();
    QDir().mkdir(temporary());
  }

  // Whether the plug-in was built and the suite that it was built for is installed.
  static bool installed() {
    return QFile::exists(program) && QFile::exists(CORVANE_PLUGIN_FOLDER "/corvane_office.so");
  }

  // The ids of the office processes with this profile.
  QList<qint64> processes() const {
    QList<qint64> result;
    for (const QString& process : QDir("/proc").entryList({"[0-9]*"})) {
      const QByteArray name = contents("/proc/" + process + "/comm");
      if ((name.contains("soffice") || name.contains("oosplash")) &&
          contents("/proc/" + process + "/environ").contains(profile_.path().toUtf8())) {
        result << process.toLongLong();
      }
    }
    return result;
  }

  // The files that it has left in the folders for temporary files and that nobody uses any more.
  QString left_files() const {
    return (left_pipes() + QDir(temporary()).entryList({"lu*", "OSL*"})).join(u' ');
  }

  // Has the suite, running or not, convert `file` to another form, such as "pdf", in `folder`.
  // `filter` says how to read the file.
  static bool convert(const QString& file, const char* form, const QString& folder,
                      const QString& filter = {}) {
    QStringList arguments = {"--headless", "--convert-to", form, "--outdir", folder};
    if (!filter.isEmpty()) arguments << "--infilter=" + filter;
    QProcess process;
    process.start(program, arguments << file);
    return process.waitForFinished(patience_ms) && process.exitCode() == 0;
  }

  // Opens `file` as a user would, in a process that keeps running.
  static void open(const QString& file) { QProcess::startDetached(program, {"--nologo", file}); }
  static bool is_open(const QString& file) {
    return QFile::exists(QString(file).insert(file.lastIndexOf(u'/') + 1, ".~lock.") + u'#');
  }

  static constexpr int patience_ms = 60'000;

 private:
  static QStringList pipes() { return QDir("/tmp").entryList({"OSL_PIPE_*"}, QDir::System); }
  // Other office processes may have made pipes meanwhile, but they listen on theirs.
  QStringList left_pipes() const {
    const QByteArray used = contents("/proc/net/unix");
    QStringList result = pipes();
    result.removeIf([&](const QString& pipe) {
      return pipes_before_.contains(pipe) || used.contains(pipe.toUtf8());
    });
    return result;
  }
  QString temporary() const { return profile_.filePath(QStringLiteral("tmp")); }

  static inline const QString program = QStringLiteral(CORVANE_OFFICE_PROGRAM "/soffice");
  QTemporaryDir profile_;
  QStringList pipes_before_ = pipes();
};
