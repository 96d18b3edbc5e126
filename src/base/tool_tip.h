// Tool tips take what looks like markup for markup. Texts that come from recorders, files and
// folders go through here. All others stay as they are, since screen readers say a tool tip as it
// is.
#pragma once

#include <QString>
#include <QTextDocument>

inline QString plain_tool_tip(const QString& text) {
  return Qt::mightBeRichText(text)
             ? QStringLiteral("<span style='white-space:pre'>%1</span>").arg(text.toHtmlEscaped())
             : text;
}
