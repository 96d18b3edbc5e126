// The wait cursor, shown while the object lives. It leaves alone a dialog that the user is to
// answer meanwhile.
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
