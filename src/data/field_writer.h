// Writes fields in the text record form that FieldReader reads: texts in double quotes, numbers
// plain, commas between the fields of a line, lines ended by CR LF (docs/data-file.md).
#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstdint>
#include <string_view>

#include "base/numbers.h"

class FieldWriter {
 public:
  // `expected_size` in bytes saves growing on the way.
  explicit FieldWriter(qsizetype expected_size = 4096);
  FieldWriter(const FieldWriter&) = delete;
  FieldWriter& operator=(const FieldWriter&) = delete;

  // A text between double quotes in the system's 8-bit encoding; a double quote inside it is
  // doubled.
  FieldWriter& text(QStringView text);
  FieldWriter& integer(std::int32_t value);
  // The shortest decimal form that reads back as the same 32-bit float.
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

  // What was written so far; valid until the next field.
  std::string_view bytes() const;

 private:
  // Where at least `characters` can be written.
  char* room(qsizetype characters) {
    if (end_ - at_ < characters) grow(characters);
    return at_;
  }
  // The same for a field, behind the comma where one is needed.
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
