// Finds the encoding of the texts in a file, which may come from another system.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringDecoder>

#include <string_view>

class TextEncoding {
 public:
  // Takes the first of these in which all of `file` can be read: UTF-8, the code page of the user's
  // language, Western European (which accepts any bytes).
  explicit TextEncoding(std::string_view file);

  QString decode(std::string_view text);

 private:
  QStringDecoder decoder_;
};

// The name of the code page that Windows uses for the language of `locale`.
const char* code_page(const QLocale& locale);
