// Operates modal dialogs from tests: what shall be done is said before the command that opens one.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

// Runs `act` once, as soon as a dialog of this class is the active modal one.
template <class Dialog>
void when_shown(std::function<void(Dialog&)> act) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act)] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    timer->stop();
    timer->deleteLater();
    act(*dialog);
  });
  timer->start(0);
}

inline void press(QPushButton* button) {
  QTest::mouseClick(button, Qt::LeftButton);
}
