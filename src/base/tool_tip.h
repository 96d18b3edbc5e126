// Qt treats a tool tip that looks like markup as markup. So this function escapes texts that come
// from recorders, files and folders, but only if they look like markup, because a screen reader
// also says the tags.
#pragma once

#include <QString>
#include <QTextDocument>

inline QString plain_tool_tip(const QString& text) {
  return Qt::mightBeRichText(text)
             ? QStringLiteral("<span style='white-space:pre'>%1</span>").arg(text.toHtmlEscaped())
             : text;
}
