// What holds for every window of the program, dialogs of the toolkit included.
#pragma once

#include <QObject>

class QWidget;

// An event filter for the application:
// - F1 opens the manual, whatever has the focus and whichever dialog is open;
// - a window opens no larger than the screen that it is on, its frame included. The frame is known
//   only when the window manager has made it; the window is then moved and shrunk once more.
class EveryWindow final : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};
