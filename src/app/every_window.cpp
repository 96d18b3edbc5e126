#include "app/every_window.h"

#include <QDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QScreen>
#include <QWidget>

#include "app/help.h"

namespace {

// The usual size, in pixels, of a frame's title bar and borders, for a window without a frame yet.
constexpr QMargins usual_frame(6, 32, 6, 6);

constexpr const char* fitted_property = "fitted_to_screen";

QMargins frame_of(const QWidget& window) {
  const QRect outside = window.frameGeometry();
  const QRect inside = window.geometry();
  return {inside.left() - outside.left(), inside.top() - outside.top(),
          outside.right() - inside.right(), outside.bottom() - inside.bottom()};
}

bool is_window_of_ours(const QObject* watched) {
  const auto* widget = qobject_cast<const QWidget*>(watched);
  return widget && widget->isWindow() &&
         (qobject_cast<const QDialog*>(widget) || qobject_cast<const QMainWindow*>(widget));
}

// The window's size, reduced if necessary so that it fits on the screen with this frame around it.
QSize size_that_fits(const QWidget& window, const QMargins& frame) {
  const QRect room = window.screen()->availableGeometry().marginsRemoved(frame);
  return window.size().boundedTo(room.size()).expandedTo(window.minimumSize());
}

void fit_before_frame(QWidget& window) {
  window.setProperty(fitted_property, false);
  if (window.isMaximized() || window.isFullScreen()) return;
  const QSize size = size_that_fits(window, usual_frame);
  if (size != window.size()) window.resize(size);
}

void fit_with_frame(QWidget& window) {
  const QMargins frame = frame_of(window);
  if (frame.isNull()) return;
  window.setProperty(fitted_property, true);
  if (window.isMaximized() || window.isFullScreen()) return;
  const QSize size = size_that_fits(window, frame);
  const QRect screen = window.screen()->availableGeometry();
  QRect outside(window.frameGeometry().topLeft(), size.grownBy(frame));
  outside.moveRight(std::min(outside.right(), screen.right()));
  outside.moveBottom(std::min(outside.bottom(), screen.bottom()));
  outside.moveLeft(std::max(outside.left(), screen.left()));
  outside.moveTop(std::max(outside.top(), screen.top()));
  if (size != window.size()) window.resize(size);
  if (outside.topLeft() != window.frameGeometry().topLeft()) window.move(outside.topLeft());
}

}  // namespace

bool EveryWindow::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) break;
      if (!key.isAutoRepeat()) open_help();
      return true;
    }
    case QEvent::Show:
      if (is_window_of_ours(watched)) fit_before_frame(static_cast<QWidget&>(*watched));
      break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowActivate:
      if (is_window_of_ours(watched) && watched->property(fitted_property) == QVariant(false)) {
        fit_with_frame(static_cast<QWidget&>(*watched));
      }
      break;
    default:
      break;
  }
  return false;
}
