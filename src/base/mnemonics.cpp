#include "base/mnemonics.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPainter>
#include <QShortcut>
#include <QStyleOption>
#include <QTabWidget>

namespace {

constexpr const char* letter_property = "letter";

QKeySequence with_alt(QChar letter) {
  return QKeySequence(QStringLiteral("Alt+") + letter.toUpper());
}

// Alt and the letter move the focus to `field` while `seen` is visible.
void lead_to(QWidget& field, QChar letter, QWidget& seen) {
  auto* shortcut = new QShortcut(with_alt(letter), &seen);
  field.setAccessibleDescription(shortcut->key().toString());
  QObject::connect(shortcut, &QShortcut::activated, &field,
                   [&field] { field.setFocus(Qt::ShortcutFocusReason); });
}

// The caption with "&" before the widget's letter, as styles expect it; unchanged without a letter.
QString marked(const QString& caption, const QWidget* widget) {
  const QChar letter = widget ? widget->property(letter_property).toChar() : QChar();
  const qsizetype at = letter.isNull() ? -1 : caption.indexOf(letter, 0, Qt::CaseInsensitive);
  return at < 0 ? caption : QString(caption).insert(at, u'&');
}

}  // namespace

void give_letter(QAbstractButton& button, QChar letter) {
  button.setProperty(letter_property, letter);
  button.setShortcut(with_alt(letter));
}

void give_letter(QLabel& label, QChar letter) {
  label.setProperty(letter_property, letter);
  lead_to(*label.buddy(), letter, label);
}

void give_letter(QWidget& field, QChar letter) {
  lead_to(field, letter, field);
  field.setToolTip(field.accessibleDescription());
}

void give_digits(QTabWidget& tabs) {
  for (int tab = 0; tab < tabs.count(); ++tab) {
    auto* shortcut = new QShortcut(with_alt(tabs.tabText(tab).back()), &tabs);
    QObject::connect(shortcut, &QShortcut::activated, &tabs,
                     [&tabs, tab] { tabs.setCurrentIndex(tab); });
  }
  tabs.tabBar()->setProperty(letter_property, true);
}

void LetterStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const auto draw = [&](const QStyleOption& copy) {
    QProxyStyle::drawControl(element, &copy, painter, widget);
  };
  if (widget && widget->property(letter_property).isValid()) {
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (element == CE_TabBarTabLabel && tab) {
      QStyleOptionTab copy = *tab;
      copy.text.insert(copy.text.size() - 1, u'&');
      return draw(copy);
    }
    const bool caption = element == CE_PushButtonLabel || element == CE_RadioButtonLabel ||
                         element == CE_CheckBoxLabel;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (caption && button) {
      QStyleOptionButton copy = *button;
      copy.text = marked(copy.text, widget);
      // A check box that may be narrower than its caption ends it in an ellipsis.
      if (widget->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) {
        copy.text = copy.fontMetrics.elidedText(copy.text, Qt::ElideRight, copy.rect.width(),
                                                Qt::TextShowMnemonic);
      }
      return draw(copy);
    }
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

// Labels draw their text through this function, which knows the label only as the paint device.
void LetterStyle::drawItemText(QPainter* painter, const QRect& place, int flags,
                               const QPalette& palette, bool enabled, const QString& text,
                               QPalette::ColorRole role) const {
  const auto* label = dynamic_cast<const QLabel*>(painter->device());
  const QString with_mark = marked(text, label);
  if (with_mark != text) flags |= Qt::TextShowMnemonic;
  QProxyStyle::drawItemText(painter, place, flags, palette, enabled, with_mark, role);
}
