#include "print/page_area.h"

#include <QKeyEvent>

#include <cmath>

namespace {

// Even when the whole page is seen, the bars reach this value, where the graph preview starts.
constexpr int least_range = 5;
constexpr int arrow_step = 40;

}  // namespace

PageArea::PageArea(DrawPage draw, QWidget* parent)
    : QAbstractScrollArea(parent), draw_(std::move(draw)) {
  Picture2 = viewport();
  Picture2->setObjectName(QStringLiteral("Picture2"));
  Picture2->setBackgroundRole(QPalette::Dark);
  Pic = new PictureBox([this](QImage& image) { paint(image); }, Picture2);
  Pic->setObjectName(QStringLiteral("Pic"));
  HScroll1 = horizontalScrollBar();
  HScroll1->setObjectName(QStringLiteral("HScroll1"));
  HScroll1->setAccessibleName(QStringLiteral("Page left and right"));
  VScroll1 = verticalScrollBar();
  VScroll1->setObjectName(QStringLiteral("VScroll1"));
  VScroll1->setAccessibleName(QStringLiteral("Page up and down"));
  setAccessibleName(QStringLiteral("Page"));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
}

void PageArea::set_page_size(QSizeF twips) {
  page_size_ = twips;
  Pic->resize(static_cast<int>(std::ceil(twips.width() / twips_per_pixel)),
              static_cast<int>(std::ceil(twips.height() / twips_per_pixel)));
  lay_out();
}

// A bar that appears takes room from the other direction, so both are decided together.
void PageArea::lay_out() {
  const QSize room = contentsRect().size();
  const int bar = HScroll1->sizeHint().height();
  const bool across = Pic->width() > room.width();
  const bool down = Pic->height() > room.height() - (across ? bar : 0);
  const bool across_too = across || Pic->width() > room.width() - (down ? bar : 0);
  setHorizontalScrollBarPolicy(across_too ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(down ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  const QSize seen = Picture2->size();
  for (QScrollBar* scroll : {HScroll1, VScroll1}) {
    const bool horizontal = scroll == HScroll1;
    const int page = horizontal ? Pic->width() : Pic->height();
    const int frame = horizontal ? seen.width() : seen.height();
    scroll->setRange(0, std::max(least_range, page - frame));
    scroll->setPageStep(frame);
    scroll->setSingleStep(arrow_step);
  }
  place_page();
}

void PageArea::place_page() {
  const auto offset = [](const QScrollBar& bar, int page, int frame) {
    return std::clamp(bar.value(), 0, std::max(0, page - frame));
  };
  Pic->move(-offset(*HScroll1, Pic->width(), Picture2->width()),
            -offset(*VScroll1, Pic->height(), Picture2->height()));
}

void PageArea::resizeEvent(QResizeEvent*) {
  lay_out();
}

void PageArea::scrollContentsBy(int, int) {
  place_page();
}

// The base class handles the arrows, Page Up and Page Down, but not Home and End.
void PageArea::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Home) {
    VScroll1->setValue(0);
  } else if (event->key() == Qt::Key_End) {
    VScroll1->setValue(VScroll1->maximum());
  } else {
    QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageArea::paint(QImage& image) const {
  image.fill(Qt::white);
  QPainter painter(&image);
  const double pixels = image.width() / static_cast<double>(Pic->width());
  painter.scale(pixels / twips_per_pixel, pixels / twips_per_pixel);
  draw_(painter, page_size_);
}

QImage PageArea::picture(double device_pixel_ratio) const {
  QImage image(Pic->size() * device_pixel_ratio, QImage::Format_RGB32);
  paint(image);
  return image;
}
