// The picture box of the graph: shows the kept picture and says in the graph's own terms what the
// user does with mouse and keys.
#pragma once

#include "base/picture_box.h"
#include "views/graph_picture.h"
#include "views/graph_view.h"

class GraphSurface final : public PictureBox {
  Q_OBJECT

 public:
  explicit GraphSurface(QWidget* parent);

  // The curves to show from now on, to be filled by the caller.
  GraphCurves& new_curves();

  // Width in twips.
  float twips_width() const { return static_cast<float>(width() * twips_per_pixel); }
  // The pixel of the window that holds this place.
  int pixel(float x_twips) const;

 Q_SIGNALS:
  // A button was pressed at this x in twips.
  void MouseDown(float x);
  void cursor_step(CursorStep step);
  void zoom_step(bool in);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  float place_of(double x_pixel) const;

  GraphPicture picture_;
  int wheel_ = 0;
};
