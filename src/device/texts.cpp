#include "device/texts.h"

#include <algorithm>

#include "device/answer_bytes.h"

namespace {

constexpr int texts_at = 3;

void copy_units(const QString& text, std::uint8_t* out, int units) {
  for (qsizetype i = 0; i < std::min<qsizetype>(text.size(), units); ++i) {
    const char16_t unit = text[i].unicode();
    *out++ = static_cast<std::uint8_t>(unit & 0xFF);
    *out++ = static_cast<std::uint8_t>(unit >> 8);
  }
}

}  // namespace

RecorderTexts decode_texts(const QByteArray& answer) {
  RecorderTexts texts;
  qsizetype index = texts_at;
  for (std::uint8_t& byte : texts.title) byte = byte_at(answer, index++);
  for (std::uint8_t& byte : texts.description) byte = byte_at(answer, index++);
  return texts;
}

QString text_of_units(const std::uint8_t* bytes, int count) {
  QString text;
  for (int i = 0; i + 1 < count; i += 2) {
    const auto unit = static_cast<char16_t>(word(bytes[i], bytes[i + 1]));
    if (unit == 0) break;
    text += QChar(unit);
  }
  return text;
}

DescriptionFrame encode_texts(const QString& title, const QString& description) {
  DescriptionFrame frame{};
  copy_units(title, frame.data(), title_units);
  copy_units(description, frame.data() + 2 * title_units, description_units);
  return frame;
}
