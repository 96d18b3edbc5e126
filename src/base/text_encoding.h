// In which 8-bit encoding the texts of a file are: this system's, or another one's.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringDecoder>

#include <string_view>

class TextEncoding {
 public:
  // The first of these in which all of `file` can be read: UTF-8, the code page of the user's
  // language, Western European, which takes anything.
  explicit TextEncoding(std::string_view file);

  QString decode(std::string_view text);

 private:
  QStringDecoder decoder_;
};

// The name of the 8-bit code page that Windows has for the language of `locale`.
const char* code_page(const QLocale& locale);
