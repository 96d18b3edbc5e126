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

// The main window takes the frame around this window away itself; the close goes no further.
void ChildWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  unload();
}
