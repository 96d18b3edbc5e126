#include "app/field_reader.h"

#include <charconv>
#include <cmath>

#include "app/errors.h"
#include "app/numbers.h"

namespace {

constexpr std::size_t longest_text = 64 * 1024;

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}
bool is_separator(char c) {
  return c == ',' || c == '\r' || c == '\n';
}

QString decoded(std::string_view bytes) {
  for (const char c : bytes) {
    if (static_cast<unsigned char>(c) >= 0x80) {
      return QString::fromLocal8Bit(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
  }
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

}  // namespace

void FieldReader::skip_blanks() {
  while (!rest_.empty() && is_blank(rest_.front())) rest_.remove_prefix(1);
}

// One comma or one line end (CR LF, LF or CR) goes with the value before it.
void FieldReader::skip_separator() {
  if (rest_.empty()) return;
  const bool return_and_feed = rest_.starts_with("\r\n");
  rest_.remove_prefix(return_and_feed ? 2 : 1);
}

std::string_view FieldReader::next_unquoted() {
  skip_blanks();
  if (rest_.empty()) throw FileError("end of the input");
  std::size_t length = 0;
  while (length < rest_.size() && !is_separator(rest_[length])) {
    if (++length > longest_text) throw FileError("text too long");
  }
  std::string_view text = rest_.substr(0, length);
  rest_.remove_prefix(length);
  skip_separator();
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

QString FieldReader::next_text() {
  skip_blanks();
  if (!rest_.starts_with('"')) return decoded(next_unquoted());
  rest_.remove_prefix(1);
  QString text;
  for (bool closed = false; !closed;) {
    const std::size_t quote = rest_.substr(0, longest_text + 1).find('"');
    if (quote == std::string_view::npos) throw FileError("quote without its partner");
    text += decoded(rest_.substr(0, quote));
    rest_.remove_prefix(quote + 1);
    closed = !rest_.starts_with('"');
    if (!closed) {
      text += u'"';
      rest_.remove_prefix(1);
    }
    if (text.size() > static_cast<qsizetype>(longest_text)) throw FileError("text too long");
  }
  skip_blanks();
  if (!rest_.empty() && !is_separator(rest_.front())) throw FileError("characters after a quote");
  skip_separator();
  return text;
}

float FieldReader::next_float() {
  const std::string_view text = next_unquoted();
  float result = 0;
  // The plain forms that the program itself writes; everything else takes the general way.
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  if (error == std::errc() && end == text.data() + text.size() && std::isfinite(result)) {
    return result;
  }
  return to_float(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
}

double FieldReader::next_double() {
  const std::string_view text = next_unquoted();
  return to_double(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
}

std::int16_t FieldReader::next_int16() {
  return to_int16(next_double());
}

std::int32_t FieldReader::next_int32() {
  return to_int32(next_double());
}
