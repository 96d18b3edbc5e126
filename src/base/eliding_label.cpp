#include "base/eliding_label.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

#include "base/tool_tip.h"

namespace {

struct Lines {
  QStringList texts;
  bool cut = false;
};

Lines lines_of(const QLabel& label) {
  const QSize room = label.contentsRect().size();
  const int most = label.wordWrap() ? std::max(1, room.height() / label.fontMetrics().height()) : 1;
  const QString text = label.text();
  Lines lines;
  QTextLayout layout(text, label.font());
  layout.beginLayout();
  for (int row = 1; row <= most; ++row) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(room.width());
    const QString whole = text.mid(line.textStart(), row < most ? line.textLength() : -1).trimmed();
    lines.texts << label.fontMetrics().elidedText(whole, Qt::ElideRight, room.width());
    lines.cut = lines.cut || lines.texts.last() != whole;
  }
  return lines;
}

}  // namespace

// Limits the width, so that a very long text leaves room for the label's neighbours.
QSize ElidingLabel::sizeHint() const {
  const QSize size = QLabel::sizeHint();
  return {std::min(size.width(), 32 * fontMetrics().averageCharWidth()), size.height()};
}

QSize ElidingLabel::minimumSizeHint() const {
  const QSize size = QLabel::minimumSizeHint();
  return {std::min(size.width(), 4 * fontMetrics().averageCharWidth()), size.height()};
}

// Leaves a text that fits to QLabel, which can let the user select it.
void ElidingLabel::paintEvent(QPaintEvent* event) {
  const Lines lines = lines_of(*this);
  const QString tip = lines.cut ? plain_tool_tip(text()) : QString();
  if (tip != tip_) setToolTip(tip_ = tip);
  if (!lines.cut) return QLabel::paintEvent(event);
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                        isEnabled(), lines.texts.join(u'\n'), foregroundRole());
}
