// Text colours that can be read on their background.
#pragma once

#include <QColor>

#include <span>

// The contrast ratio of two colours as the accessibility guidelines define it: 1 for equal colours,
// 21 for black and white.
double contrast(const QColor& a, const QColor& b);

// The lowest contrast ratio at which a text is readable.
inline constexpr double readable_contrast = 4.5;

// `wanted`, mixed with just enough of the window's text colour `text` to be readable on each of
// `backgrounds`; `text` itself if no mixture is.
QColor readable_colour(const QColor& wanted, const QColor& text,
                       std::span<const QColor> backgrounds);

// The colour that results from `upper`, with an opacity of 0..1, over `lower`.
QColor seen_through(const QColor& upper, double opacity, const QColor& lower);
