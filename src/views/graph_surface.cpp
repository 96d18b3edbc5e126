#include "views/graph_surface.h"

#include <QKeyEvent>
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

GraphSurface::GraphSurface(QWidget* parent)
    : PictureBox(
          [this](QImage& image) {
            picture_.draw(image, picture_size(size(), devicePixelRatioF()),
                          palette().color(QPalette::Base).rgb());
          },
          parent) {
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &PictureBox::mouse_down, this, [this](double x) { Q_EMIT MouseDown(place_of(x)); });
}

GraphCurves& GraphSurface::new_curves() {
  redraw();
  return picture_.new_curves();
}

int GraphSurface::pixel(float x_twips) const {
  return whole_pixel(x_twips, static_cast<float>(width() - 1) / twips_width());
}

// The counterpart of where samples are drawn: the picture's edges are its first and last column.
float GraphSurface::place_of(double x_pixel) const {
  const double column = x_pixel * devicePixelRatioF();
  const int last = picture_size(size(), devicePixelRatioF()).pixels.width() - 1;
  const double part = std::clamp(column / std::max(1, last), 0.0, 1.0);
  return static_cast<float>(part) * twips_width();
}

void GraphSurface::paintEvent(QPaintEvent* event) {
  PictureBox::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void GraphSurface::changeEvent(QEvent* event) {
  PictureBox::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) redraw();
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
