// Free-format sequential input: values separated by commas or line ends, as the device file and
// the data file hold them.
#pragma once

#include <QString>

#include <cstdint>
#include <string_view>

class FieldReader {
 public:
  // Reads from `bytes`, which must outlive the reader; they are in the system's 8-bit encoding.
  explicit FieldReader(std::string_view bytes)
      : at_(bytes.data()), end_(bytes.data() + bytes.size()) {}

  // The next value as a text. Between double quotes everything counts, line ends included, and a
  // doubled quote stands for one; blanks around an unquoted value are dropped. Throws FileError at
  // the end of the input and for a text over 64 KiB, a quote without its partner, or characters
  // between a closing quote and the next separator.
  QString next_text();
  // The same into `text`, whose memory is used again; on an error it keeps what it had.
  void next_text(QString& text);

  // The next value as a number. Throw FileError at the end of the input, ConversionError for what
  // is not a number or does not fit; the value is then behind the reader all the same.
  float next_float();
  std::int16_t next_int16();
  std::int32_t next_int32();

 private:
  std::string_view next_unquoted();
  QString next_quoted();
  std::string_view up_to_quote(const char* from) const;
  double next_double();
  bool at_field_end(const char* position) const;
  void skip_blanks();
  void skip_separator();

  const char* at_;
  const char* end_;
};
