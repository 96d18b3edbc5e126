#include "base/child_window.h"

#include <QCloseEvent>

ChildWindow::KeepAlive::~KeepAlive() {
  if (--window_.handlers_ == 0 && window_.unloaded_) window_.deleteLater();
}

void ChildWindow::unload() {
  if (unloaded_) return;
  unloaded_ = true;
  Form_Unload();
  Q_EMIT unloading();
  hide();
  if (handlers_ == 0) deleteLater();
}

// Ignores the event, because the main window removes the frame around this window itself.
void ChildWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  unload();
}
