#include "app/field_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "app/errors.h"
#include "app/numbers.h"

namespace {

constexpr std::size_t longest_text = 64 * 1024;
// Memory of a text that is used again for the next one; more of it is given back.
constexpr qsizetype largest_kept = 256;

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}
bool is_separator(char c) {
  return c == ',' || c == '\r' || c == '\n';
}

// Nearly every text is ASCII, which is written over the memory that `text` has already.
void decode(std::string_view bytes, QString& text) {
  const auto size = static_cast<qsizetype>(bytes.size());
  unsigned char seen = 0;
  for (const char c : bytes) seen |= static_cast<unsigned char>(c);
  if (seen >= 0x80) {
    text = QString::fromLocal8Bit(bytes.data(), size);
    return;
  }
  if (text.capacity() > largest_kept) text = QString();
  text.resize(size);
  std::transform(bytes.begin(), bytes.end(), text.data(),
                 [](char c) { return QChar(QLatin1Char(c)); });
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
  QString text;
  next_text(text);
  return text;
}

void FieldReader::next_text(QString& text) {
  skip_blanks();
  if (!rest_.starts_with('"')) return decode(next_unquoted(), text);
  // A short text without quotes in it, as the program writes them by the thousand.
  const std::size_t quote = rest_.substr(0, longest_text).find('"', 1);
  if (quote != std::string_view::npos && at_field_end(rest_.data() + quote + 1)) {
    decode(rest_.substr(1, quote - 1), text);
    go_to(rest_.data() + quote + 1);
    skip_separator();
  } else {
    text = next_quoted();
  }
}

// Any text between quotes.
QString FieldReader::next_quoted() {
  rest_.remove_prefix(1);
  QString text;
  for (bool closed = false; !closed;) {
    const std::size_t quote = rest_.substr(0, longest_text + 1).find('"');
    if (quote == std::string_view::npos) throw FileError("quote without its partner");
    QString part;
    decode(rest_.substr(0, quote), part);
    text += part;
    rest_.remove_prefix(quote + 1);
    closed = !rest_.starts_with('"');
    if (!closed) {
      text += u'"';
      rest_.remove_prefix(1);
    }
    if (text.size() > static_cast<qsizetype>(longest_text)) throw FileError("text too long");
  }
  skip_blanks();
  if (!at_field_end(rest_.data())) throw FileError("characters after a quote");
  skip_separator();
  return text;
}

bool FieldReader::at_field_end(const char* position) const {
  return position == rest_.data() + rest_.size() || is_separator(*position);
}

// `position` lies in what is still to be read.
void FieldReader::go_to(const char* position) {
  rest_.remove_prefix(static_cast<std::size_t>(position - rest_.data()));
}

float FieldReader::next_float() {
  // The plain forms that the program itself writes; everything else takes the general way.
  float result = 0;
  const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), result);
  if (error == std::errc() && at_field_end(end) && std::isfinite(result)) {
    go_to(end);
    skip_separator();
    return result;
  }
  const std::string_view text = next_unquoted();
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
