#include "views/graph_surface.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QWheelEvent>

#include <optional>

#include "base/escape_key.h"
#include "views/graph_accessible.h"

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

// Drawn around the graph: inside, it would hide the first and the last samples.
class GraphFocus final : public QFocusFrame {
 public:
  using QFocusFrame::QFocusFrame;

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr int width = 2;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), width, Qt::SolidLine, Qt::SquareCap,
                        Qt::MiterJoin));
    painter.drawRect(rect().adjusted(width / 2, width / 2, -width / 2, -width / 2));
  }
};

}  // namespace

GraphSurface::GraphSurface(QWidget* parent)
    : PictureBox(
          [this](QImage& image) {
            const PictureColours colours = {palette().color(QPalette::Base).rgb(),
                                            palette().color(QPalette::Text).rgb()};
            picture_.draw(image, picture_size(size(), image.size(), devicePixelRatioF()), colours);
          },
          parent),
      focus_frame_(new GraphFocus(this)) {
  focus_frame_->hide();
  make_graph_accessible();
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &PictureBox::mouse_down, this, [this](double x) { Q_EMIT MouseDown(place_of(x)); });
}

GraphCurves& GraphSurface::curves_to_fill() {
  redraw();
  return picture_.curves_to_fill();
}

int GraphSurface::pixel(float x_twips) const {
  return whole_pixel(x_twips, static_cast<float>(width() - 1) / twips_width());
}

// Converts a mouse position to twips, the inverse of sample_columns().
float GraphSurface::place_of(double x_pixel) const {
  const double ratio = devicePixelRatioF();
  const PictureSize drawn = picture_size(size(), (QSizeF(size()) * ratio).toSize(), ratio);
  const double last = std::max(1, drawn.pixels.width() - drawn.line);
  return static_cast<float>(std::clamp(x_pixel * ratio / last, 0.0, 1.0)) * twips_width();
}

void GraphSurface::show_value(const GraphValue& value) {
  const bool moved = value.sample != value_.sample;
  value_ = value;
  if (!moved) return;
  QAccessibleValueChangeEvent event(this, value.sample);
  QAccessible::updateAccessibility(&event);
}

void GraphSurface::choose(int slot) {
  if (slot >= static_cast<int>(channels())) return;
  bring_forward(chosen() == slot ? std::nullopt : std::optional(slot));
}

void GraphSurface::add_legend(QWidget& part, int slot) {
  legend_.insert(&part, slot);
  part.installEventFilter(this);
  part.setCursor(Qt::PointingHandCursor);
}

bool GraphSurface::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress && legend_.contains(watched)) {
    // The graph takes the focus because its keys end the choice.
    setFocus(Qt::MouseFocusReason);
    choose(legend_.value(watched));
  }
  return PictureBox::eventFilter(watched, event);
}

void GraphSurface::bring_forward(std::optional<int> slot) {
  picture_.bring_forward(slot);
  setProperty(takes_escape, slot.has_value());
  redraw();
  Q_EMIT chosen_changed();
}

void GraphSurface::focusInEvent(QFocusEvent* event) {
  focus_frame_->setWidget(this);
  PictureBox::focusInEvent(event);
}

void GraphSurface::focusOutEvent(QFocusEvent* event) {
  focus_frame_->setWidget(nullptr);
  PictureBox::focusOutEvent(event);
}

void GraphSurface::changeEvent(QEvent* event) {
  PictureBox::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) redraw();
}

// One notch of an ordinary wheel is one step; finer wheels and touch pads add up to one.
void GraphSurface::wheelEvent(QWheelEvent* event) {
  constexpr int notch = 120;
  wheel_ += event->angleDelta().y();
  for (; wheel_ >= notch; wheel_ -= notch) Q_EMIT zoom_step(true);
  for (; wheel_ <= -notch; wheel_ += notch) Q_EMIT zoom_step(false);
  event->accept();
}

void GraphSurface::keyPressEvent(QKeyEvent* event) {
  if (!press(*event)) PictureBox::keyPressEvent(event);
}

// Returns false for a key that the graph does not use.
bool GraphSurface::press(const QKeyEvent& key) {
  if (key.matches(QKeySequence::Copy)) {
    Q_EMIT copy_wanted();
  } else if (const auto step = step_of(key.key())) {
    Q_EMIT cursor_step(*step);
  } else if (key.key() == Qt::Key_Plus || key.key() == Qt::Key_Minus) {
    Q_EMIT zoom_step(key.key() == Qt::Key_Plus);
  } else if (key.key() >= Qt::Key_1 && key.key() <= Qt::Key_4) {
    choose(key.key() - Qt::Key_1);
  } else if (key.key() == Qt::Key_Escape && chosen()) {
    bring_forward(std::nullopt);
  } else {
    return false;
  }
  return true;
}

void GraphSurface::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  QAction* copy = menu->addAction(QStringLiteral("Copy"));
  copy->setShortcut(QKeySequence::Copy);
  connect(copy, &QAction::triggered, this, &GraphSurface::copy_wanted);
  menu->popup(event->globalPos());
}
