// The program's own pictures, drawn from SVG sources at the size and scale that a screen needs.
#pragma once

#include <QIcon>
#include <QString>

class QPalette;

// The picture of the toolbar button `key` ("open", "save", ...). Its lines have the palette's text
// colour and a blue that contrasts with the window colour, so that it is clear on light and dark
// themes; when disabled, the lines are faded. Call again when the palette changes. Null for a key
// without a picture.
QIcon command_icon(const QString& key, const QPalette& palette);

// The program's icon, in its own fixed colours.
QIcon application_icon();
