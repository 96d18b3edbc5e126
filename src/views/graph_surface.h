// The graph's picture box. It shows the kept picture and reports mouse and keyboard input in the
// graph's own terms.
#pragma once

#include <QFocusFrame>
#include <QHash>

#include "base/picture_box.h"
#include "views/graph_picture.h"
#include "views/graph_view.h"

// What a screen reader says of the graph: the time and the readings at the cursor, and the number
// of the cursor's sample, 1 to `samples`. The text is empty without a cursor.
struct GraphValue {
  QString text{};
  int sample = 0;
  int samples = 0;
};

class GraphSurface final : public PictureBox {
  Q_OBJECT

 public:
  explicit GraphSurface(QWidget* parent);

  // Gives the curves to show from now on; the caller fills them.
  GraphCurves& curves_to_fill();

  // Width in twips.
  float twips_width() const { return static_cast<float>(width() * twips_per_pixel); }
  // The column of this place, in window pixels.
  int pixel(float x_twips) const;

  // Keeps the value for screen readers and, if it is of another sample, has them say it.
  void show_value(const GraphValue& value);
  const GraphValue& value() const { return value_; }

  // Brings a channel slot forward (see GraphPicture); choosing the same slot again ends this.
  void choose(int slot);
  std::optional<int> chosen() const { return picture_.forward(); }
  // Makes a click on this part of the legend choose the slot.
  void add_legend(QWidget& part, int slot);

 Q_SIGNALS:
  // A mouse button was pressed at this x, in twips.
  void MouseDown(float x);
  void cursor_step(CursorStep step);
  void zoom_step(bool in);
  void chosen_changed();
  // A screen reader asks for the cursor to move to this sample, counted from 0.
  void sample_wanted(int sample);
  // The copy key was pressed or "Copy" was chosen from the context menu.
  void copy_wanted();

 protected:
  void changeEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  float place_of(double x_pixel) const;
  bool press(const QKeyEvent& key);
  void bring_forward(std::optional<int> slot);

  GraphPicture picture_;
  GraphValue value_;
  QHash<QObject*, int> legend_;
  std::size_t channels() const { return picture_.curves().channels.size(); }
  QFocusFrame* focus_frame_;
  int wheel_ = 0;
};
