// While it lives, calls a function when Escape is pressed. An open dialog or menu keeps the key,
// and so does the widget with the focus if its property `takes_escape` is true.
#pragma once

#include <QObject>

#include <functional>

inline constexpr const char* takes_escape = "takes_escape";

class EscapeKey final : public QObject {
  Q_OBJECT

 public:
  explicit EscapeKey(std::function<void()> pressed);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void()> pressed_;
};
