// The program's own pictures, drawn from SVG sources at whatever size and scale a screen asks for.
#pragma once

#include <QIcon>
#include <QString>

class QPalette;

// The picture of the toolbar key `key` ("open", "save", ...): lines in the palette's text colour
// and a blue that stands out from its window colour, so that it can be read on light and dark
// themes; disabled, the same lines pale. Ask again when the palette changes. Null for a key that
// has no picture.
QIcon command_icon(const QString& key, const QPalette& palette);

// The program's icon, in colours of its own.
QIcon application_icon();
