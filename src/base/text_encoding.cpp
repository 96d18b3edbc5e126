#include "base/text_encoding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr const char* western = "windows-1252";

QByteArrayView view(std::string_view bytes) {
  return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

QStringDecoder user_decoder() {
#ifdef Q_OS_WIN
  return QStringDecoder(QStringDecoder::System);
#else
  return QStringDecoder(code_page(QLocale::system()));
#endif
}

bool reads(QStringDecoder& decoder, std::string_view file) {
  if (!decoder.isValid()) return false;
  const QString text = decoder(view(file));
  return !decoder.hasError() && !text.contains(QChar::ReplacementCharacter);
}

QStringDecoder decoder_for(std::string_view file) {
  // Checked without decoding: nearly every file is UTF-8, and it may hold any valid character.
  if (view(file).isValidUtf8()) return QStringDecoder(QStringDecoder::Utf8);
  QStringDecoder of_user = user_decoder();
  if (reads(of_user, file)) return of_user;
  QStringDecoder other(western);
  if (reads(other, file)) return other;
  return QStringDecoder(QStringDecoder::Latin1);
}

}  // namespace

TextEncoding::TextEncoding(std::string_view file) : decoder_(decoder_for(file)) {}

QString TextEncoding::decode(std::string_view text) {
  decoder_.resetState();
  return decoder_(view(text));
}

const char* code_page(const QLocale& locale) {
  using Page = std::pair<QLocale::Language, const char*>;
  static constexpr auto pages = std::to_array<Page>({
      {QLocale::Japanese, "Shift_JIS"},
      {QLocale::Korean, "CP949"},
      {QLocale::Thai, "TIS-620"},
      {QLocale::Vietnamese, "windows-1258"},
      {QLocale::Russian, "windows-1251"},
      {QLocale::Ukrainian, "windows-1251"},
      {QLocale::Belarusian, "windows-1251"},
      {QLocale::Bulgarian, "windows-1251"},
      {QLocale::Macedonian, "windows-1251"},
      {QLocale::Serbian, "windows-1251"},
      {QLocale::Kazakh, "windows-1251"},
      {QLocale::Kyrgyz, "windows-1251"},
      {QLocale::Mongolian, "windows-1251"},
      {QLocale::Tatar, "windows-1251"},
      {QLocale::Polish, "windows-1250"},
      {QLocale::Czech, "windows-1250"},
      {QLocale::Slovak, "windows-1250"},
      {QLocale::Hungarian, "windows-1250"},
      {QLocale::Slovenian, "windows-1250"},
      {QLocale::Croatian, "windows-1250"},
      {QLocale::Bosnian, "windows-1250"},
      {QLocale::Romanian, "windows-1250"},
      {QLocale::Albanian, "windows-1250"},
      {QLocale::Greek, "windows-1253"},
      {QLocale::Turkish, "windows-1254"},
      {QLocale::Azerbaijani, "windows-1254"},
      {QLocale::Hebrew, "windows-1255"},
      {QLocale::Arabic, "windows-1256"},
      {QLocale::Persian, "windows-1256"},
      {QLocale::Urdu, "windows-1256"},
      {QLocale::Lithuanian, "windows-1257"},
      {QLocale::Latvian, "windows-1257"},
      {QLocale::Estonian, "windows-1257"},
  });
  if (locale.language() == QLocale::Chinese) {
    return locale.script() == QLocale::TraditionalChineseScript ? "Big5" : "GB18030";
  }
  const auto* const page = std::find_if(pages.begin(), pages.end(), [&locale](const Page& one) {
    return one.first == locale.language();
  });
  return page == pages.end() ? western : page->second;
}
