// Converts texts between Qt and the office suite.
#pragma once

#include <QString>

#include <rtl/ustring.hxx>

inline rtl::OUString to_uno(const QString& text) {
  return {reinterpret_cast<const sal_Unicode*>(text.utf16()), static_cast<sal_Int32>(text.size())};
}

inline QString from_uno(const rtl::OUString& text) {
  return QString(reinterpret_cast<const QChar*>(text.getStr()), text.getLength());
}
