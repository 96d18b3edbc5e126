// The look of a field that shows and takes nothing.
#pragma once

#include <QPalette>
#include <QWidget>

// The field has the window's background instead of an input's. For read-only line and text edits.
inline void look_read_only(QWidget& field) {
  QPalette palette = field.palette();
  palette.setBrush(QPalette::Base, palette.window());
  palette.setBrush(QPalette::Text, palette.windowText());
  field.setPalette(palette);
}
