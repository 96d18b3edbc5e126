// The look of a read-only field.
#pragma once

#include <QPalette>
#include <QWidget>

// Gives a read-only line or text edit the window's background instead of an input field's.
inline void look_read_only(QWidget& field) {
  QPalette palette = field.palette();
  palette.setBrush(QPalette::Base, palette.window());
  palette.setBrush(QPalette::Text, palette.windowText());
  field.setPalette(palette);
}
