// Operates modal dialogs from tests: what shall be done is said before the command that opens one.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

// Runs `act` once, as soon as a dialog of this class is the active modal one. What the result is
// kept in must live until then; with it the script ends, used or not.
template <class Dialog>
[[nodiscard]] std::unique_ptr<QTimer> when_shown(std::function<void(Dialog&)> act) {
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(),
                   [script = timer.get(), act = std::move(act)] {
                     auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
                     if (!dialog) return;
                     script->stop();
                     act(*dialog);
                     // A check that failed in it has left the dialog as it was.
                     if (QTest::currentTestFailed()) dialog->close();
                   });
  timer->start(0);
  return timer;
}

inline void press(QPushButton* button) {
  QTest::mouseClick(button, Qt::LeftButton);
}
