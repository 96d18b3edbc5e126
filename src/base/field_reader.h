// Free-format sequential input: values separated by commas or line ends, as the device file and
// the data file hold them.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/text_encoding.h"

class FieldReader {
 public:
  // Reads from `bytes`, which must outlive the reader. Skips a byte order mark.
  explicit FieldReader(std::string_view bytes);

  // The next value as a text. Between double quotes every character counts, line ends included, and
  // two quotes mean one; blanks around an unquoted value are dropped. Throws FileError at the end
  // of the input and for a text over 64 KiB, a quote that is never closed, or characters between a
  // closing quote and the next separator.
  QString next_text();

  // The next value as a number. All three throw FileError at the end of the input. They throw
  // ConversionError for a value that is no number or does not fit, and have then passed that value.
  float next_float();
  std::int16_t next_int16();
  std::int32_t next_int32();

 private:
  QString decode(std::string_view field);
  std::string_view next_unquoted();
  QString next_quoted();
  std::string_view up_to_quote(const char* from) const;
  double next_double();
  bool at_field_end(const char* position) const;
  void skip_blanks();
  void skip_separator();

  std::string_view bytes_;
  const char* at_;
  const char* end_;
  // Detected at the first text that is not ASCII.
  std::optional<TextEncoding> encoding_;
};
