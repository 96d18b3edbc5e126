// Colours of texts that can be read on what is behind them.
#pragma once

#include <QColor>

#include <span>

// The contrast of two colours as the accessibility guidelines count it: 1 for the same, 21 for
// black and white.
double contrast(const QColor& a, const QColor& b);

// The least contrast that a text needs.
inline constexpr double readable_contrast = 4.5;

// `wanted`, brought so far towards the window's colour of texts that it can be read on each of
// `backgrounds`; that colour itself where nothing else can.
QColor readable_colour(const QColor& wanted, const QColor& text,
                       std::span<const QColor> backgrounds);

// What is seen of `lower` through `upper`, whose opacity is 0..1.
QColor seen_through(const QColor& upper, double opacity, const QColor& lower);
