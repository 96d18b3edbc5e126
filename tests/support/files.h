// Files as tests look at them.
#pragma once

#include <QFile>

inline QByteArray contents(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}
