// Letters that work the controls of a dialog together with Alt. A control's text stays its caption
// without marks: the letter is kept beside it, and LetterStyle underlines it when it is drawn.
#pragma once

#include <QProxyStyle>

class QAbstractButton;
class QLabel;
class QTabWidget;

// Alt and the letter press the button.
void give_letter(QAbstractButton& button, QChar letter);

// Alt and the letter lead to the label's buddy, while the label can be seen.
void give_letter(QLabel& label, QChar letter);

// Alt and its own digit open each tab: "Tab 0" with Alt+0.
void give_digits(QTabWidget& tabs);

// Draws captions with the letter underlined. Without it the letters work all the same.
class LetterStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawItemText(QPainter* painter, const QRect& place, int flags, const QPalette& palette,
                    bool enabled, const QString& text, QPalette::ColorRole role) const override;
};
