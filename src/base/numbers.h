// The few forms in which the program writes and reads numbers. The decimal point is "." whatever
// the locale.
#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

// "0.00": two decimals; a value exactly halfway rounds away from zero (0.125 is 0.13, -0.125 is
// -0.13); a value that rounds to zero has no sign.
QString fixed2(double value);

// The same for loops over many readings: writes into `out`, which must hold at least `fixed2_size`
// characters, and returns the end of the written text.
inline constexpr int fixed2_size = 64;
char16_t* write_fixed2(char16_t* out, float value);

// The value that fixed2 shows, read back as a 32-bit float.
float rounded_to_2_decimals(double value);

// A whole number preceded by a blank, or by "-" when negative.
QString whole_with_leading_blank(std::int64_t value);

// The general number form of a 32-bit float: at most 7 significant digits, no trailing zeros, and
// an exponent only below 0.0001 and from 10000000 on.
QString general_number(float value);

// The shortest plain decimal form that reads back as the same 32-bit float: no exponent, no
// trailing zeros, no point for a whole value, at most 7 significant digits unless 7 do not read
// back the same (then 8 or 9). Writes into `out`, which must hold at least `shortest_float_size`
// characters, and returns the end of the written text.
inline constexpr int shortest_float_size = 64;
char* write_shortest_float(char* out, float value);

// Nearest whole number, ties to even.
double round_half_even(double value);

// Nearest whole number, ties to even, as a 16- or 32-bit integer. Throws ConversionError when it
// does not fit.
std::int16_t to_int16(double value);
std::int32_t to_int32(double value);

// The number as a byte. Throws ConversionError outside 0..255.
std::uint8_t to_byte(std::int32_t value);

// The number that a text holds, with blanks around it ignored. A number too small for a double is
// zero. No value if the text is not a number (empty, letters, hexadecimal, infinity) or too large
// for a double.
std::optional<double> number_of(QStringView text);
bool is_number(QStringView text);

// The same in single precision; no value if it does not fit.
std::optional<float> float_of(QStringView text);

// The number itself. All three throw ConversionError if the text is not a number or does not fit.
double to_double(QStringView text);
float to_float(QStringView text);
std::int16_t to_int16(QStringView text);
