// The recorder's title and description: two fields of UTF-16LE code units, in an answer and in the
// request that sets them (docs/protocol.md).
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

inline constexpr int title_units = 8;
inline constexpr int description_units = 24;

// The fields' bytes as they are read from the recorder.
struct RecorderTexts {
  std::array<std::uint8_t, 2 * title_units> title{};
  std::array<std::uint8_t, 2 * description_units> description{};
};

// Throws BoundsError for an answer of fewer than 67 bytes.
RecorderTexts decode_texts(const QByteArray& answer);

// The text that `count` bytes of UTF-16LE are, up to the first zero unit. Half of a surrogate pair
// at the end of a field stays what it is, so that the text is sent back as the same bytes.
QString text_of_units(const std::uint8_t* bytes, int count);

// Title and description as they are sent; the last byte never is.
using DescriptionFrame = std::array<std::uint8_t, 2 * (title_units + description_units) + 1>;

// 16 bytes of the title and 48 of the description as UTF-16LE code units, zeros where a text is
// shorter. A longer text is cut, if need be between the halves of a surrogate pair.
DescriptionFrame encode_texts(const QString& title, const QString& description);
