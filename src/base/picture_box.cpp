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

// The image is kept between drawings: a new one of this size costs more than the curves in it.
void PictureBox::paintEvent(QPaintEvent*) {
  const double ratio = devicePixelRatioF();
  const QSize device_size = (QSizeF(size()) * ratio).toSize();
  if (image_.size() != device_size) {
    image_ = QImage(device_size, QImage::Format_RGB32);
    outdated_ = true;
  }
  if (outdated_ && !image_.isNull()) {
    image_.setDevicePixelRatio(1);
    draw_(image_);
    image_.setDevicePixelRatio(ratio);
    outdated_ = false;
  }
  QPainter(this).drawImage(0, 0, image_);
}

void PictureBox::resizeEvent(QResizeEvent*) {
  Q_EMIT resized();
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
  Q_EMIT mouse_down(event->position().x());
}
