// Shows the wait cursor while the object lives, except while a dialog waits for the user's answer.
#pragma once

#include <QObject>

class WaitCursor final : public QObject {
  Q_OBJECT

 public:
  WaitCursor();
  ~WaitCursor() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void update();

  bool shown_ = false;
};
