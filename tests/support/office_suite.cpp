#include "support/office_suite.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <signal.h>

namespace {

constexpr int patience_ms = 60'000;

QString program() {
#ifdef CORVANE_OFFICE_PROGRAM
  return QStringLiteral(CORVANE_OFFICE_PROGRAM "/soffice");
#else
  return {};
#endif
}

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The pipes that a process listens at; a process that is told to end leaves their files behind.
QStringList pipes_of(qint64 process) {
  QByteArrayList sockets;
  const QDir handles(QStringLiteral("/proc/%1/fd").arg(process));
  for (const QFileInfo& handle : handles.entryInfoList(QDir::System | QDir::Files)) {
    sockets << QFile::encodeName(handle.symLinkTarget().section(u'/', -1))
                   .replace("socket:[", "")
                   .replace("]", "");
  }
  QStringList result;
  for (const QByteArray& line : contents(QStringLiteral("/proc/net/unix")).split('\n')) {
    const QByteArrayList fields = line.simplified().split(' ');
    if (fields.size() == 8 && sockets.contains(fields[6]) && fields[7].contains("OSL_PIPE_")) {
      result << QFile::decodeName(fields[7]);
    }
  }
  return result;
}

}  // namespace

OfficeSuite::OfficeSuite() {
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(profile_.path()));
  QDir(profile_.path()).mkdir(QStringLiteral("tmp"));
  qputenv("TMPDIR", QFile::encodeName(profile_.filePath(QStringLiteral("tmp"))));
}

OfficeSuite::~OfficeSuite() {
  QStringList pipes;
  for (const qint64 process : processes()) {
    pipes += pipes_of(process);
    kill(static_cast<pid_t>(process), SIGTERM);
  }
  QElapsedTimer timer;
  timer.start();
  while (!processes().isEmpty() && !timer.hasExpired(patience_ms)) QThread::msleep(20);
  for (const QString& pipe : pipes) QFile::remove(pipe);
  qunsetenv("XDG_CONFIG_HOME");
  qunsetenv("TMPDIR");
}

bool OfficeSuite::installed() {
  return QFileInfo(program()).isExecutable() &&
         QFileInfo::exists(QStringLiteral(CORVANE_PLUGIN_FOLDER "/corvane_office.so"));
}

bool OfficeSuite::has_windows() {
  return QFileInfo::exists(QFileInfo(program()).path() + QStringLiteral("/libvclplug_genlo.so"));
}

QList<qint64> OfficeSuite::processes() const {
  const QByteArray mark = "XDG_CONFIG_HOME=" + QFile::encodeName(profile_.path()) + '\0';
  QList<qint64> result;
  for (const QString& process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    const QString folder = QStringLiteral("/proc/") + process;
    const bool office = contents(folder + QStringLiteral("/comm")).contains("soffice") ||
                        contents(folder + QStringLiteral("/comm")).contains("oosplash");
    if (office && contents(folder + QStringLiteral("/environ")).contains(mark)) {
      result << process.toLongLong();
    }
  }
  return result;
}

QStringList OfficeSuite::left_files() const {
  return QDir(profile_.filePath(QStringLiteral("tmp")))
      .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
}

bool OfficeSuite::run(const QStringList& arguments) const {
  QProcess process;
  process.start(program(), QStringList{"--norestore", "--nologo"} + arguments);
  return process.waitForFinished(patience_ms) && process.exitCode() == 0;
}

bool OfficeSuite::convert(const QString& file, const QString& filter, const QString& folder) const {
  return run({"--headless", "--convert-to", filter, "--outdir", folder, file});
}

void OfficeSuite::open(const QString& file) const {
  QProcess process;
  process.setProgram(program());
  process.setArguments({"--norestore", "--nologo", file});
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), QStringLiteral("svp"));
  process.setProcessEnvironment(environment);
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  process.startDetached();
}

bool OfficeSuite::is_open(const QString& file) {
  const QFileInfo info(file);
  return QFile::exists(info.path() + QStringLiteral("/.~lock.") + info.fileName() + u'#');
}
