// Ends the program once a window is painted for the first time.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

class UntilPainted : public QObject {
 public:
  explicit UntilPainted(QWidget& window) { window.installEventFilter(this); }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }
    return false;
  }
};
