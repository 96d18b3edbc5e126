// Tool tips take what looks like markup for markup. Texts that come from recorders, files and
// folders go through here.
#pragma once

#include <QString>

inline QString plain_tool_tip(const QString& text) {
  return text.isEmpty()
             ? text
             : QStringLiteral("<span style='white-space:pre'>%1</span>").arg(text.toHtmlEscaped());
}
