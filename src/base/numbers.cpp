#include "base/numbers.h"

#include <QByteArray>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

#include "base/errors.h"

namespace {

// Characters. Every finite double fits: with two decimals the largest takes 312.
constexpr int decimal_room = 400;

// Below this value different hundredths are different floats. So the float nearest to a number of
// hundredths has no decimal form shorter than that number.
constexpr float all_hundredths_differ = 65536.0F;
// From this value on, the exact value has more digits than reading it back needs.
constexpr float whole_floats_from = 16777216.0F;

// Readings have two decimals. This writes such a value several times faster than the general way.
char* write_trimmed(char* out, unsigned hundredths, bool negative) {
  if (negative) *out++ = '-';
  out = std::to_chars(out, out + shortest_float_size, hundredths / 100).ptr;
  const unsigned decimals = hundredths % 100;
  if (decimals == 0) return out;
  *out++ = '.';
  *out++ = static_cast<char>('0' + decimals / 10);
  if (decimals % 10 != 0) *out++ = static_cast<char>('0' + decimals % 10);
  return out;
}

// Writes the shortest digits, followed by zeros up to the decimal point.
char* write_large(char* out, float value) {
  char* end =
      std::to_chars(out, out + shortest_float_size, value, std::chars_format::scientific).ptr;
  char* const exponent_mark = std::find(out, end, 'e');
  int exponent = 0;
  std::from_chars(exponent_mark + 2, end, exponent);  // behind "e+"
  char* const point = std::find(out, exponent_mark, '.');
  end = point == exponent_mark ? point : std::copy(point + 1, exponent_mark, point);
  const auto decimals = static_cast<int>(end - point);
  return std::fill_n(end, exponent - decimals, '0');
}

}  // namespace

QString fixed2(double value) {
  if (!std::isfinite(value)) return QString::number(value);
  const double magnitude = std::fabs(value);
  char digits[decimal_room];
  auto end =
      std::to_chars(digits, digits + sizeof digits, magnitude, std::chars_format::fixed, 2).ptr;
  // to_chars rounds an exact tie to even; ties go away from zero here.
  const double hundredths = magnitude * 100.0;
  if (hundredths - std::floor(hundredths) == 0.5 &&
      std::fma(magnitude, 100.0, -hundredths) == 0.0) {
    const double up = std::floor(hundredths) + 1.0;
    end =
        std::to_chars(digits, digits + sizeof digits, up / 100.0, std::chars_format::fixed, 2).ptr;
  }
  const std::string_view text(digits, static_cast<std::size_t>(end - digits));
  const bool zero = text.find_first_not_of("0.") == std::string_view::npos;
  QString result = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  if (value < 0 && !zero) result.prepend(u'-');
  return result;
}

namespace {

char16_t digit(std::uint32_t value) {
  return static_cast<char16_t>(u'0' + value % 10);
}

}  // namespace

char16_t* write_fixed2(char16_t* out, float value) {
  // A float times a hundred is exact in double precision, and adding a half never rounds it across
  // a whole number. So below the limit every digit is the same as in fixed2.
  constexpr double limit = 4e9;
  const double hundredths = std::fabs(value) * 100.0 + 0.5;
  if (!(hundredths < limit)) {
    const QString text = fixed2(static_cast<double>(value));
    return std::transform(text.cbegin(), text.cend(), out, [](QChar c) { return c.unicode(); });
  }
  const auto all = static_cast<std::uint32_t>(hundredths);
  if (value < 0 && all != 0) *out++ = u'-';
  std::uint32_t whole = all / 100;
  int digits = 1;
  for (std::uint32_t rest = whole; rest >= 10; rest /= 10) ++digits;
  for (int place = digits; place-- > 0; whole /= 10) out[place] = digit(whole);
  out += digits;
  *out++ = u'.';
  *out++ = digit(all / 10);
  *out++ = digit(all);
  return out;
}

float rounded_to_2_decimals(double value) {
  const QByteArray text = fixed2(value).toLatin1();
  float result = 0;
  std::from_chars(text.data(), text.data() + text.size(), result);
  return result;
}

QString whole_with_leading_blank(std::int64_t value) {
  return value < 0 ? QString::number(value) : u' ' + QString::number(value);
}

QString general_number(float value) {
  char digits[64];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 7).ptr;
  return QString::fromLatin1(digits, end - digits).toUpper();
}

char* write_shortest_float(char* out, float value) {
  const float magnitude = std::fabs(value);
  if (magnitude < all_hundredths_differ) {
    const float scaled = magnitude * 100.0F;
    const auto hundredths =
        static_cast<unsigned>(scaled + 0.5F);  // NOLINT: faster than lround, and checked below
    const auto rounded = static_cast<float>(hundredths);
    // The first comparison only spares most other values the division.
    if (std::fabs(scaled - rounded) <= scaled * 2.4e-7F && rounded / 100.0F == magnitude &&
        hundredths != 0) {
      return write_trimmed(out, hundredths, value < 0.0F);
    }
  }
  if (magnitude >= whole_floats_from && std::isfinite(value)) return write_large(out, value);
  return std::to_chars(out, out + shortest_float_size, value, std::chars_format::fixed).ptr;
}

double round_half_even(double value) {
  return std::nearbyint(value);
}

std::int16_t to_int16(double value) {
  const double whole = round_half_even(value);
  if (!(whole >= std::numeric_limits<std::int16_t>::min() &&
        whole <= std::numeric_limits<std::int16_t>::max())) {
    throw ConversionError("number too large for 16 bits");
  }
  return static_cast<std::int16_t>(whole);
}

std::int32_t to_int32(double value) {
  const double whole = round_half_even(value);
  if (!(whole >= std::numeric_limits<std::int32_t>::min() &&
        whole <= std::numeric_limits<std::int32_t>::max())) {
    throw ConversionError("number too large for 32 bits");
  }
  return static_cast<std::int32_t>(whole);
}

std::uint8_t to_byte(std::int32_t value) {
  if (value < 0 || value > 255) throw ConversionError("number too large for a byte");
  return static_cast<std::uint8_t>(value);
}

namespace {

// Zero for a number too small for a double, no value for one too large. from_chars does not
// distinguish them; a stream does.
std::optional<double> zero_if_tiny(const QByteArray& number) {
  std::istringstream stream(number.toStdString());
  stream.imbue(std::locale::classic());
  double value = 0;
  return stream >> value ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<double> number_of(QStringView text) {
  QStringView trimmed = text.trimmed();
  if (trimmed.startsWith(u'+')) {
    trimmed = trimmed.mid(1);
    if (trimmed.startsWith(u'-')) return std::nullopt;
  }
  // from_chars would also take "inf" and "nan".
  for (const QChar c : trimmed) {
    const bool allowed =
        (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+' || c == u'e' || c == u'E';
    if (!allowed) return std::nullopt;
  }
  const QByteArray bytes = trimmed.toLatin1();
  double result = 0;
  const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), result);
  if (end != bytes.data() + bytes.size()) return std::nullopt;
  if (error == std::errc::result_out_of_range) return zero_if_tiny(bytes);
  if (error != std::errc()) return std::nullopt;
  return result;
}

bool is_number(QStringView text) {
  return number_of(text).has_value();
}

double to_double(QStringView text) {
  const auto number = number_of(text);
  if (!number) throw ConversionError("not a number");
  return *number;
}

std::optional<float> float_of(QStringView text) {
  const auto number = number_of(text);
  if (!number || !std::isfinite(static_cast<float>(*number))) return std::nullopt;
  return static_cast<float>(*number);
}

float to_float(QStringView text) {
  const auto number = float_of(text);
  if (!number) throw ConversionError("not a 32-bit float");
  return *number;
}

std::int16_t to_int16(QStringView text) {
  return to_int16(to_double(text));
}
