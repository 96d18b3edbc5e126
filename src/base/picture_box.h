// A widget that shows what its owner draws, in device pixels. The owner draws only while the widget
// is visible, and again only after redraw() or a change of size.
#pragma once

#include <QImage>
#include <QWidget>

#include <functional>

class PictureBox : public QWidget {
  Q_OBJECT

 public:
  // Fills the whole image. Its size is in device pixels and its device pixel ratio is 1.
  using Draw = std::function<void(QImage& image)>;

  PictureBox(Draw draw, QWidget* parent);

  void redraw();

 Q_SIGNALS:
  // A mouse button went down at `x` of 0 .. width() - 1, in the widget's own pixels.
  void mouse_down(double x);
  void resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  Draw draw_;
  QImage image_;
  bool outdated_ = true;
};
