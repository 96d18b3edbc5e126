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

// A modal dialog blocks the windows behind it when it opens and unblocks them when it closes.
bool WaitCursor::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowBlocked || event->type() == QEvent::WindowUnblocked) update();
  return QObject::eventFilter(watched, event);
}

// A disabled dialog is itself waiting, so it shows the cursor too.
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
