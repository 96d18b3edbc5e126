// Writes fields in the form that FieldReader reads: texts in double quotes, numbers without quotes,
// commas between the fields of a line, CR LF after each line (docs/data-file.md).
#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstdint>
#include <string_view>

#include "base/numbers.h"

class FieldWriter {
 public:
  // Reserves `expected_size` bytes; the buffer grows beyond that.
  explicit FieldWriter(qsizetype expected_size = 4096);
  FieldWriter(const FieldWriter&) = delete;
  FieldWriter& operator=(const FieldWriter&) = delete;

  // Writes a text between double quotes in the system's 8-bit encoding, and doubles each double
  // quote in it.
  FieldWriter& text(QStringView text);
  FieldWriter& integer(std::int32_t value);
  // Writes the shortest decimal form that reads back as the same 32-bit float.
  FieldWriter& real(float value) {
    at_ = write_shortest_float(start_field(shortest_float_size), value);
    return *this;
  }
  FieldWriter& end_line() {
    at_ = room(2);
    *at_++ = '\r';
    *at_++ = '\n';
    line_started_ = false;
    return *this;
  }

  // The bytes written so far; valid until the next field.
  std::string_view bytes() const;

 private:
  // Returns where to write, with room for at least `characters`.
  char* room(qsizetype characters) {
    if (end_ - at_ < characters) grow(characters);
    return at_;
  }
  // Does the same for a field, and first writes a comma if the line already has a field.
  char* start_field(qsizetype characters) {
    char* out = room(characters + 1);
    if (line_started_) *out++ = ',';
    line_started_ = true;
    return out;
  }
  void grow(qsizetype characters);

  QByteArray buffer_;
  char* at_;
  char* end_;
  bool line_started_ = false;
};
