#include "base/wait_cursor.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

WaitCursor::WaitCursor() {
  qApp->installEventFilter(this);
  update();
}

WaitCursor::~WaitCursor() {
  if (shown_) QGuiApplication::restoreOverrideCursor();
}

// The windows behind a modal dialog are blocked when it opens and unblocked when it is gone.
bool WaitCursor::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowBlocked || event->type() == QEvent::WindowUnblocked) update();
  return QObject::eventFilter(watched, event);
}

// A disabled dialog waits itself.
void WaitCursor::update() {
  const QWidget* dialog = QApplication::activeModalWidget();
  const bool wanted = !dialog || !dialog->isEnabled();
  if (wanted == shown_) return;
  shown_ = wanted;
  if (wanted) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}
