#include "base/program_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace {

QString& folder_override() {
  static QString folder;
  return folder;
}

}  // namespace

QString program_folder() {
  return folder_override().isEmpty() ? QCoreApplication::applicationDirPath() : folder_override();
}

void set_program_folder(const QString& folder) {
  folder_override() = folder;
}

QString documents_folder() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                   QStringLiteral("/Corvane");
  QDir().mkpath(folder);
  return folder;
}
