#include "base/own_glyphs.h"

#include <QFontDatabase>

void add_own_glyphs() {
  [[maybe_unused]] static const int font =
      QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/own-glyphs.ttf"));
}
