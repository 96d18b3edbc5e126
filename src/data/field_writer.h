// Writes fields in the text record form that FieldReader reads: texts in double quotes, numbers
// plain, commas between the fields of a line, lines ended by CR LF (docs/data-file.md).
#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstdint>
#include <string_view>

class FieldWriter {
 public:
  // `expected_size` in bytes saves growing on the way.
  explicit FieldWriter(qsizetype expected_size = 4096);

  // A text between double quotes in the system's 8-bit encoding; a double quote inside it is
  // doubled.
  FieldWriter& text(QStringView text);
  FieldWriter& whole(std::int32_t value);
  // The shortest decimal form that reads back as the same 32-bit float.
  FieldWriter& real(float value);
  FieldWriter& end_line();

  // What was written so far; valid until the next field.
  std::string_view bytes() const;

 private:
  char* room(qsizetype characters);
  char* start_field(qsizetype characters);
  void end_field(const char* end);

  QByteArray buffer_;
  qsizetype size_ = 0;
  bool line_started_ = false;
};
