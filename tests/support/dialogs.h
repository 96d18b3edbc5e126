// Operates modal dialogs from tests: a test plans the action before the command that opens one.
#pragma once

#include <QTest>
#include <QtWidgets>

#include <functional>
#include <memory>

// Runs `act` once, as soon as a dialog of this class is the active modal one. The test must keep
// the result until then: its destruction cancels the plan.
template <class Dialog>
[[nodiscard]] std::unique_ptr<QTimer> when_shown(std::function<void(Dialog&)> act) {
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(),
                   [script = timer.get(), act = std::move(act)] {
                     auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
                     if (!dialog) return;
                     script->stop();
                     act(*dialog);
                     // A failed check has left `act` early, with the dialog still open.
                     if (QTest::currentTestFailed()) dialog->close();
                   });
  timer->start(0);
  return timer;
}

inline void press(QPushButton* button) {
  QTest::mouseClick(button, Qt::LeftButton);
}
