#include "app/help.h"

#include <QProcess>

#include "base/program_folder.h"

void open_help() {
#ifdef Q_OS_WIN
  QProcess::startDetached(QStringLiteral("hh.exe"),
                          {program_folder() + QStringLiteral("\\qlxhelp.chm")});
#else
  QProcess::startDetached(QStringLiteral("xdg-open"),
                          {program_folder() + QStringLiteral("/qlxhelp.chm")});
#endif
}
