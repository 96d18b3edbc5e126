#include "views/graph_surface.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <optional>

namespace {

std::optional<CursorStep> step_of(int key) {
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      return CursorStep::sample_back;
    case Qt::Key_Right:
    case Qt::Key_Up:
      return CursorStep::sample_on;
    case Qt::Key_PageUp:
      return CursorStep::page_back;
    case Qt::Key_PageDown:
      return CursorStep::page_on;
    case Qt::Key_Home:
      return CursorStep::start;
    case Qt::Key_End:
      return CursorStep::end;
    default:
      return std::nullopt;
  }
}

}  // namespace

GraphSurface::GraphSurface(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

GraphCurves& GraphSurface::new_curves() {
  update();
  return picture_.new_curves();
}

int GraphSurface::pixel(float x_twips) const {
  return whole_pixel(x_twips, static_cast<float>(width() - 1) / twips_width());
}

void GraphSurface::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawImage(0, 0, picture_.image(size_now(), palette().color(QPalette::Base).rgb()));
  if (hasFocus()) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
}

void GraphSurface::mousePressEvent(QMouseEvent* event) {
  const PictureSize size = size_now();
  const double column = event->position().x() * size.ratio;
  const double part = column / std::max(1, size.pixels.width() - 1);
  Q_EMIT MouseDown(static_cast<float>(std::clamp(part, 0.0, 1.0)) * size.width);
}

// A notch of an ordinary wheel is a step; finer wheels and touch pads add up to one.
void GraphSurface::wheelEvent(QWheelEvent* event) {
  constexpr int notch = 120;
  wheel_ += event->angleDelta().y();
  for (; wheel_ >= notch; wheel_ -= notch) Q_EMIT zoom_step(true);
  for (; wheel_ <= -notch; wheel_ += notch) Q_EMIT zoom_step(false);
  event->accept();
}

void GraphSurface::keyPressEvent(QKeyEvent* event) {
  if (const auto step = step_of(event->key())) {
    Q_EMIT cursor_step(*step);
  } else {
    QWidget::keyPressEvent(event);
  }
}
