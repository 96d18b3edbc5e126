// While it lives, calls a function when Escape is pressed. An open dialog or menu keeps the key.
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
