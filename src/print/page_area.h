// The middle of a preview: a page at full size behind a frame, scrolled by bars, wheel and keys.
#pragma once

#include <QAbstractScrollArea>
#include <QPainter>
#include <QScrollBar>

#include <functional>

#include "base/picture_box.h"
#include "base/twips.h"

class PageArea : public QAbstractScrollArea {
  Q_OBJECT

 public:
  // Draws the page. The painter's unit is the twip, its origin the paper's corner.
  using DrawPage = std::function<void(QPainter& painter, QSizeF size)>;

  PageArea(DrawPage draw, QWidget* parent);

  // The paper's size in twips.
  void set_page_size(QSizeF twips);
  QSizeF page_size() const { return page_size_; }
  void redraw() { Pic->redraw(); }
  // The page as it looks now, drawn again.
  QImage picture(double device_pixel_ratio = 1) const;

  QWidget* Picture2;  // the frame
  PictureBox* Pic;    // the page
  // They count the pixels of the page hidden left of and above the frame. A bar vanishes when the
  // page fits, and keeps its value.
  QScrollBar* HScroll1;
  QScrollBar* VScroll1;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void lay_out();
  void place_page();
  void paint(QImage& image) const;

  DrawPage draw_;
  QSizeF page_size_;
};
