#include "base/field_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "base/errors.h"
#include "base/numbers.h"

namespace {

constexpr std::ptrdiff_t longest_text = 64 * 1024;

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}
bool is_separator(char c) {
  return c == ',' || c == '\r' || c == '\n';
}

}  // namespace

FieldReader::FieldReader(std::string_view bytes)
    : bytes_(bytes), at_(bytes.data()), end_(bytes.data() + bytes.size()) {
  constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(byte_order_mark)) at_ += byte_order_mark.size();
}

// Nearly every text is ASCII, which needs no search for an encoding.
QString FieldReader::decode(std::string_view field) {
  unsigned char seen = 0;
  for (const char c : field) seen |= static_cast<unsigned char>(c);
  if (seen < 0x80) return QString::fromLatin1(field.data(), static_cast<qsizetype>(field.size()));
  if (!encoding_) encoding_.emplace(bytes_);
  return encoding_->decode(field);
}

inline void FieldReader::skip_blanks() {
  while (at_ != end_ && is_blank(*at_)) ++at_;
}

// One comma or one line end (CR LF, LF or CR) belongs to the value before it.
inline void FieldReader::skip_separator() {
  if (at_ == end_) return;
  const bool carriage_return = *at_++ == '\r';
  if (carriage_return && at_ != end_ && *at_ == '\n') ++at_;
}

inline bool FieldReader::at_field_end(const char* position) const {
  return position == end_ || is_separator(*position);
}

std::string_view FieldReader::next_unquoted() {
  skip_blanks();
  if (at_ == end_) throw FileError("end of the input");
  const char* const first = at_;
  while (!at_field_end(at_)) {
    if (++at_ - first > longest_text) throw FileError("text too long");
  }
  const char* last = at_;
  skip_separator();
  while (last != first && is_blank(last[-1])) --last;
  return {first, static_cast<std::size_t>(last - first)};
}

// The text from `from` to the next quote, without the quote.
std::string_view FieldReader::up_to_quote(const char* from) const {
  const auto most = std::min<std::ptrdiff_t>(end_ - from, longest_text + 1);
  const void* quote = std::memchr(from, '"', static_cast<std::size_t>(most));
  if (!quote) throw FileError("quote without its partner");
  return {from, static_cast<std::size_t>(static_cast<const char*>(quote) - from)};
}

QString FieldReader::next_text() {
  skip_blanks();
  if (at_ == end_ || *at_ != '"') return decode(next_unquoted());
  ++at_;
  // Nearly always the first quote ends the text, and a separator follows.
  const std::string_view plain = up_to_quote(at_);
  const char* const after = plain.data() + plain.size() + 1;
  if (!at_field_end(after)) return next_quoted();
  at_ = after;
  skip_separator();
  return decode(plain);
}

// The general case of a quoted text. The reader is behind the opening quote.
QString FieldReader::next_quoted() {
  QString text;
  for (bool closed = false; !closed;) {
    const std::string_view plain = up_to_quote(at_);
    text += decode(plain);
    at_ += plain.size() + 1;
    closed = at_ == end_ || *at_ != '"';
    if (!closed) {
      text += u'"';
      ++at_;
    }
    if (text.size() > longest_text) throw FileError("text too long");
  }
  skip_blanks();
  if (!at_field_end(at_)) throw FileError("characters after a quote");
  skip_separator();
  return text;
}

float FieldReader::next_float() {
  float result = 0;
  const auto [end, error] = std::from_chars(at_, end_, result);
  if (error == std::errc() && std::isfinite(result) && at_field_end(end)) {
    at_ = end;
    skip_separator();
    return result;
  }
  // The value has blanks around it or a plus sign, is too small for a float, or is no number.
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
