// The recorder's title and description: two fields of UTF-16LE code units, as an answer reports
// them and a request sets them (docs/protocol.md).
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

// The text of `count` bytes of UTF-16LE, up to the first zero unit. Keeps half of a surrogate pair
// at the end of a field, so that the text is sent back as the same bytes.
QString text_of_units(const std::uint8_t* bytes, int count);

// Title and description as they are sent. The last byte of the frame is never sent.
using DescriptionFrame = std::array<std::uint8_t, 2 * (title_units + description_units) + 1>;

// 16 bytes of the title and 48 of the description as UTF-16LE code units, padded with zeros. A
// longer text is cut, if need be between the halves of a surrogate pair.
DescriptionFrame encode_texts(const QString& title, const QString& description);
