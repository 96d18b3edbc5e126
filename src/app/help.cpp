#include "app/help.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include "base/program_folder.h"

#ifdef Q_OS_WIN

void open_help() {
  QProcess::startDetached(QStringLiteral("hh.exe"),
                          {program_folder() + QStringLiteral("\\qlxhelp.chm")});
}

#else

namespace {

void open_with_desktop(const QString& path) {
  QProcess::startDetached(QStringLiteral("xdg-open"), {path});
}

}  // namespace

// Asks the desktop for a viewer first: without one, it would open the compiled file in a browser,
// which cannot show it. If the desktop cannot be asked, opens the compiled file.
void open_help() {
  const QString compiled = program_folder() + QStringLiteral("/qlxhelp.chm");
  const QString pages = program_folder() + QStringLiteral("/help/index.html");
  if (!QFileInfo::exists(pages)) return open_with_desktop(compiled);
  auto* question = new QProcess(qApp);
  QObject::connect(question, &QProcess::finished, question, [=](int code) {
    const bool no_viewer = code == 0 && question->readAllStandardOutput().trimmed().isEmpty();
    open_with_desktop(no_viewer || !QFileInfo::exists(compiled) ? pages : compiled);
    question->deleteLater();
  });
  QObject::connect(question, &QProcess::errorOccurred, question, [=](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;
    open_with_desktop(compiled);
    question->deleteLater();
  });
  question->start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                               QStringLiteral("application/vnd.ms-htmlhelp")});
}

#endif
