// Behaviour common to every window of the program, including the toolkit's dialogs.
#pragma once

#include <QObject>

class QWidget;

// An event filter for the application:
// - F1 opens the manual, whatever has the focus and whichever dialog is open;
// - a window opens no larger than its screen, including its frame. Once the window manager has made
//   the frame and its size is known, the window is moved and shrunk again if necessary.
class EveryWindow final : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};
