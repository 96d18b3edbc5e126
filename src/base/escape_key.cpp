#include "base/escape_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

EscapeKey::EscapeKey(std::function<void()> pressed) : pressed_(std::move(pressed)) {
  qApp->installEventFilter(this);
}

bool EscapeKey::eventFilter(QObject* watched, QEvent* event) {
  const bool escape = event->type() == QEvent::KeyPress &&
                      static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape;
  const QWidget* focus = QApplication::focusWidget();
  if (!escape || QApplication::activeModalWidget() || QApplication::activePopupWidget() ||
      (focus && focus->property(takes_escape).toBool())) {
    return QObject::eventFilter(watched, event);
  }
  pressed_();
  return true;
}
