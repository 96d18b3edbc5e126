// Listens for the Escape key while it lives. Dialogs and menus keep theirs.
#pragma once

#include <QObject>

#include <functional>

class EscapeKey final : public QObject {
  Q_OBJECT

 public:
  explicit EscapeKey(std::function<void()> pressed);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void()> pressed_;
};
