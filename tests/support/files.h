// Files as tests make them and look at them.
#pragma once

#include <QFile>

inline QByteArray contents(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline bool make_file(const QString& name, const QByteArray& bytes = {}) {
  QFile file(name);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
