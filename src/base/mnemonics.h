// Letters that operate the controls of a dialog together with Alt. A control's text stays free of
// "&" marks: its letter is a property, and LetterStyle underlines it when it draws the text.
#pragma once

#include <QProxyStyle>

class QAbstractButton;
class QLabel;
class QTabWidget;

// Alt and the letter press the button.
void give_letter(QAbstractButton& button, QChar letter);

// Alt and the letter move the focus to the label's buddy while the label is visible.
void give_letter(QLabel& label, QChar letter);

// Alt and the letter move the focus to a field that has no caption to show the letter; its tool tip
// says it.
void give_letter(QWidget& field, QChar letter);

// Alt and the last character of a tab's text open the tab: Alt+0 opens "Tab 0".
void give_digits(QTabWidget& tabs);

// Draws captions with the letter underlined. The letters work without it too.
class LetterStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawItemText(QPainter* painter, const QRect& place, int flags, const QPalette& palette,
                    bool enabled, const QString& text, QPalette::ColorRole role) const override;
};
