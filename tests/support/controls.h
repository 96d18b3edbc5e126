// Rules for the controls of every window, for users who enlarge the screen, hear it, or have no
// mouse.
#pragma once

#include <QAccessible>
#include <QtWidgets>

// The controls that a user can operate in a window, without the parts of which Qt makes them.
inline QList<QWidget*> controls_of(const QWidget& window) {
  auto widgets = window.findChildren<QWidget*>();
  widgets.removeIf([](const QWidget* widget) {
    const bool control =
        qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
        qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
        qobject_cast<const QSlider*>(widget) || qobject_cast<const QTabBar*>(widget) ||
        qobject_cast<const QAbstractItemView*>(widget);
    return !control || !widget->isVisible() || !widget->isEnabled() ||
           widget->inherits("QToolButton") || widget->inherits("QTableCornerButton") ||
           widget->inherits("QHeaderView");
  });
  return widgets;
}

// Each control has a name for those who hear the screen, and the keyboard reaches it.
inline QString fault_of_control(QWidget& widget) {
  const QString name = widget.objectName();
  if (name.isEmpty() || name.startsWith(u"qt_") || qobject_cast<QTabBar*>(&widget)) return {};
  const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
  const bool named = interface && !interface->text(QAccessible::Name).isEmpty();
  if (!named) return name + QStringLiteral(" has no name");
  // The arrow keys reach a group's radio buttons; the percentage is only shown.
  const auto* edit = qobject_cast<QLineEdit*>(&widget);
  const bool reached = qobject_cast<QRadioButton*>(&widget) || (edit && edit->isReadOnly()) ||
                       (widget.focusPolicy() & Qt::TabFocus) != 0;
  return reached ? QString() : name + QStringLiteral(" cannot be reached by Tab");
}

// The frame inside the main window that holds a control, or nullptr.
inline const QWidget* frame_of(const QWidget* widget) {
  while (widget && !widget->inherits("QMdiSubWindow")) widget = widget->parentWidget();
  return widget;
}

// Within a frame the Tab key moves right or down, from the first control to the last.
inline QString fault_of_tab_order(const QWidget& window) {
  const auto controls = controls_of(window);
  const QWidget* last = nullptr;
  for (QWidget* next = window.nextInFocusChain(); next != &window;
       next = next->nextInFocusChain()) {
    if (!controls.contains(next) || (next->focusPolicy() & Qt::TabFocus) == 0) continue;
    const auto place = [](const QWidget* widget) {
      return QRect(widget->mapToGlobal(QPoint()), widget->size());
    };
    if (last && frame_of(last) == frame_of(next) && place(next).top() <= place(last).bottom() &&
        place(next).left() <= place(last).right() && !place(last).contains(place(next))) {
      return last->objectName() + QStringLiteral(" is followed by ") + next->objectName();
    }
    last = next;
  }
  return {};
}

// No label is cut unless its tool tip has the text, and no text from outside is taken as markup.
inline QString fault_of_texts(const QWidget& window) {
  for (const auto* widget : window.findChildren<QWidget*>()) {
    // A tool tip cannot be set to plain text: what looks like markup in one must be escaped.
    if (widget->toolTip().contains(u"<b>")) return widget->objectName() + QStringLiteral("'s tip");
  }
  for (const auto* label : window.findChildren<QLabel*>()) {
    if (label->text().contains(u'<') && label->textFormat() != Qt::PlainText) {
      return label->objectName() + QStringLiteral(" takes texts for markup");
    }
    // A label may be cut if its tool tip has the whole text.
    const int lines = label->wordWrap() ? label->heightForWidth(label->width()) : 0;
    const int width = label->wordWrap() ? label->minimumSizeHint().width()
                                        : label->fontMetrics().size(0, label->text()).width();
    if (!label->visibleRegion().isEmpty() && (label->width() < width || label->height() < lines) &&
        !label->toolTip().contains(label->text().toHtmlEscaped())) {
      return label->objectName() + QStringLiteral(" is cut: ") + label->text();
    }
  }
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (label->parent() == button->parent() && label->isVisible() && button->isVisible() &&
          label->geometry().intersects(button->geometry())) {
        return label->objectName() + QStringLiteral(" lies under ") + button->objectName();
      }
    }
    if (button->isVisible() && !button->text().isEmpty() &&
        button->width() < button->sizeHint().width() &&
        !button->toolTip().contains(button->text().toHtmlEscaped())) {
      return button->objectName() + QStringLiteral(" is cut: ") + button->text();
    }
  }
  return {};
}

// In a dialog each visible caption and picker has a letter that no other has.
inline QString fault_of_letters(const QDialog& dialog) {
  QStringList letters;
  for (const auto* widget : dialog.findChildren<QWidget*>()) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const auto* label = qobject_cast<const QLabel*>(widget);
    const auto* key = widget->findChild<QShortcut*>({}, Qt::FindDirectChildrenOnly);
    const bool picker = qobject_cast<const QAbstractSpinBox*>(widget);
    if (picker && widget->accessibleDescription().startsWith(u"Alt+")) continue;
    const bool caption = (button && !button->text().isEmpty()) || (label && label->buddy());
    if (!widget->isVisible() || (!picker && !caption)) continue;
    letters << (button ? button->shortcut() : key ? key->key() : QKeySequence()).toString();
    if (!letters.last().isEmpty() && letters.count(letters.last()) == 1) continue;
    return widget->objectName() + QStringLiteral(" has no letter of its own");
  }
  return {};
}

// The first rule that a control of the window breaks; empty if all are kept.
inline QString fault_of_controls(const QWidget& window) {
  for (QWidget* control : controls_of(window)) {
    if (const QString fault = fault_of_control(*control); !fault.isEmpty()) return fault;
  }
  const auto* dialog = qobject_cast<const QDialog*>(&window);
  QString order = dialog ? fault_of_letters(*dialog) : QString();
  if (order.isEmpty()) order = fault_of_tab_order(window);
  return order.isEmpty() ? fault_of_texts(window) : order;
}
