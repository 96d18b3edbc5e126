#include "base/field_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

#include "base/errors.h"
#include "base/numbers.h"

namespace {

constexpr std::ptrdiff_t longest_text = 64 * 1024;
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
  if (text.capacity() < size || text.capacity() > largest_kept) {
    text = QString(size, Qt::Uninitialized);
  } else {
    text.resize(size);
  }
  std::transform(bytes.begin(), bytes.end(), text.data(),
                 [](char c) { return QChar(QLatin1Char(c)); });
}

// Reads a number of up to 15 digits without an exponent, as readings are, in a fraction of the time
// that from_chars takes and with the same result. The digits and the power of ten are exact in a
// double, so dividing them rounds once, to a double. Rounding that to a float gives the float
// nearest to the number, unless the double lies just between two floats: then the first rounding
// may have hidden the side on which the number is. Gives the end of the number, or nothing for that
// case and for any other form.
const char* read_plain(const char* at, const char* end, float& value) {
  constexpr int most_digits = 15;
  static constexpr std::array<double, most_digits + 1> powers = {
      1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const bool negative = at != end && *at == '-';
  const char* const first = at + (negative ? 1 : 0);
  const char* const last = first + std::min<std::ptrdiff_t>(end - first, most_digits + 2);
  const char* point = nullptr;
  std::int64_t digits = 0;
  for (at = first; at != last; ++at) {
    const int digit = *at - '0';
    if (digit >= 0 && digit <= 9) {
      digits = digits * 10 + digit;
    } else if (*at == '.' && !point) {
      point = at;
    } else {
      break;
    }
  }
  const auto count = at - first - (point ? 1 : 0);
  if (count < 1 || count > most_digits) return nullptr;
  const auto decimals = static_cast<std::size_t>(point ? at - point - 1 : 0);
  const double magnitude = static_cast<double>(digits) / powers[decimals];
  // The 29 bits of a double that a float does not have.
  constexpr std::uint64_t below_float = (1U << 29) - 1;
  if ((std::bit_cast<std::uint64_t>(magnitude) & below_float) == 1U << 28) return nullptr;
  value = static_cast<float>(negative ? -magnitude : magnitude);
  return at;
}

}  // namespace

inline void FieldReader::skip_blanks() {
  while (at_ != end_ && is_blank(*at_)) ++at_;
}

// One comma or one line end (CR LF, LF or CR) goes with the value before it.
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

// What stands from `from` on before the next quote.
std::string_view FieldReader::up_to_quote(const char* from) const {
  const auto most = std::min<std::ptrdiff_t>(end_ - from, longest_text + 1);
  const void* quote = std::memchr(from, '"', static_cast<std::size_t>(most));
  if (!quote) throw FileError("quote without its partner");
  return {from, static_cast<std::size_t>(static_cast<const char*>(quote) - from)};
}

QString FieldReader::next_text() {
  QString text;
  next_text(text);
  return text;
}

void FieldReader::next_text(QString& text) {
  skip_blanks();
  if (at_ == end_ || *at_ != '"') return decode(next_unquoted(), text);
  ++at_;
  // Nearly always the first quote ends the text, and a separator follows.
  const std::string_view plain = up_to_quote(at_);
  const char* const after = plain.data() + plain.size() + 1;
  if (!at_field_end(after)) {
    text = next_quoted();
    return;
  }
  decode(plain, text);
  at_ = after;
  skip_separator();
}

// Any text between quotes, from behind the first one.
QString FieldReader::next_quoted() {
  QString text;
  for (bool closed = false; !closed;) {
    const std::string_view plain = up_to_quote(at_);
    QString part;
    decode(plain, part);
    text += part;
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
  const char* end = read_plain(at_, end_, result);
  if (!end || !at_field_end(end)) {
    const auto general = std::from_chars(at_, end_, result);
    const bool taken = general.ec == std::errc() && std::isfinite(result);
    end = taken && at_field_end(general.ptr) ? general.ptr : nullptr;
  }
  if (end) {
    at_ = end;
    skip_separator();
    return result;
  }
  // Blanks around it, a plus sign, too small for a float: or not a number.
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
