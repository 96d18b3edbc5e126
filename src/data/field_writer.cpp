#include "data/field_writer.h"

#include <QString>

#include <algorithm>
#include <charconv>

namespace {

constexpr qsizetype whole_size = 12;

// Copies a text of ASCII without quotes, as nearly every text is. Returns false for any other text;
// the bytes in `out` are then of no use.
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

FieldWriter::FieldWriter(qsizetype expected_size)
    : buffer_(expected_size, Qt::Uninitialized),
      at_(buffer_.data()),
      end_(buffer_.data() + buffer_.size()) {}

void FieldWriter::grow(qsizetype characters) {
  const qsizetype size = at_ - buffer_.constData();
  buffer_.resize(std::max(size + characters, 2 * buffer_.size()));
  at_ = buffer_.data() + size;
  end_ = buffer_.data() + buffer_.size();
}

FieldWriter& FieldWriter::text(QStringView text) {
  at_ = start_field(text.size() + 2);
  *at_++ = '"';
  if (copy_plain(text, at_)) {
    at_ += text.size();
  } else {
    QByteArray encoded = text.toString().toLocal8Bit();
    encoded.replace('"', "\"\"");
    at_ = std::copy(encoded.cbegin(), encoded.cend(), room(encoded.size() + 1));
  }
  *at_++ = '"';
  return *this;
}

FieldWriter& FieldWriter::integer(std::int32_t value) {
  char* const out = start_field(whole_size);
  at_ = std::to_chars(out, out + whole_size, value).ptr;
  return *this;
}

std::string_view FieldWriter::bytes() const {
  return {buffer_.constData(), static_cast<std::size_t>(at_ - buffer_.constData())};
}
