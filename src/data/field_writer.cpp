#include "data/field_writer.h"

#include <QString>

#include <algorithm>
#include <charconv>

#include "app/numbers.h"

namespace {

constexpr qsizetype whole_size = 12;

// Copies ASCII without quotes, which is nearly every text; false, with `out` half written, for any
// other text.
bool copy_plain(QStringView text, char* out) {
  char16_t seen = 0;
  bool quote = false;
  for (const QChar c : text) {
    seen = static_cast<char16_t>(seen | c.unicode());
    quote |= c == u'"';
    *out++ = static_cast<char>(c.unicode());
  }
  return seen < 0x80 && !quote;
}

}  // namespace

FieldWriter::FieldWriter(qsizetype expected_size) : buffer_(expected_size, Qt::Uninitialized) {}

char* FieldWriter::room(qsizetype characters) {
  const qsizetype needed = size_ + characters;
  if (needed > buffer_.size()) buffer_.resize(std::max(needed, 2 * buffer_.size()));
  return buffer_.data() + size_;
}

// Gives where a field of at most `characters` goes, behind the comma where one is needed.
char* FieldWriter::start_field(qsizetype characters) {
  char* out = room(characters + 1);
  if (line_started_) *out++ = ',';
  line_started_ = true;
  return out;
}

void FieldWriter::end_field(const char* end) {
  size_ = end - buffer_.constData();
}

FieldWriter& FieldWriter::text(QStringView text) {
  char* out = start_field(text.size() + 2);
  *out++ = '"';
  if (copy_plain(text, out)) {
    out += text.size();
  } else {
    QByteArray encoded = text.toString().toLocal8Bit();
    encoded.replace('"', "\"\"");
    end_field(out);
    out = std::copy(encoded.cbegin(), encoded.cend(), room(encoded.size() + 1));
  }
  *out++ = '"';
  end_field(out);
  return *this;
}

FieldWriter& FieldWriter::whole(std::int32_t value) {
  char* const out = start_field(whole_size);
  end_field(std::to_chars(out, out + whole_size, value).ptr);
  return *this;
}

FieldWriter& FieldWriter::real(float value) {
  end_field(write_shortest_float(start_field(shortest_float_size), value));
  return *this;
}

FieldWriter& FieldWriter::end_line() {
  char* out = room(2);
  *out++ = '\r';
  *out++ = '\n';
  end_field(out);
  line_started_ = false;
  return *this;
}

std::string_view FieldWriter::bytes() const {
  return {buffer_.constData(), static_cast<std::size_t>(size_)};
}
