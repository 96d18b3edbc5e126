#include "base/picture_box.h"

#include <QMouseEvent>
#include <QPainter>

PictureBox::PictureBox(Draw draw, QWidget* parent) : QWidget(parent), draw_(std::move(draw)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void PictureBox::redraw() {
  outdated_ = true;
  update();
}

// The scale from window pixels to device pixels can be any factor. So the image covers the device
// rectangle whose edges are nearest to the widget's, which is what the window system lets it paint.
// The image is kept between drawings, because a new one of this size costs more than drawing the
// curves in it.
void PictureBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QTransform to_device = painter.deviceTransform();
  const QPoint first = to_device.map(QPointF(0, 0)).toPoint();
  const QPoint end = to_device.map(QPointF(width(), height())).toPoint();
  const QSize device_size(end.x() - first.x(), end.y() - first.y());
  if (image_.size() != device_size) {
    image_ = QImage(device_size, QImage::Format_RGB32);
    outdated_ = true;
  }
  if (outdated_ && !image_.isNull()) {
    draw_(image_);
    outdated_ = false;
  }
  painter.setTransform(to_device.inverted(), true);
  painter.drawImage(first, image_);
}

void PictureBox::resizeEvent(QResizeEvent*) {
  Q_EMIT resized();
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
  Q_EMIT mouse_down(event->position().x());
}
