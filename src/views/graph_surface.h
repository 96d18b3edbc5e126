// The picture box of the graph: shows the kept picture and says in the graph's own terms what the
// user does with mouse and keys.
#pragma once

#include <QFocusFrame>
#include <QHash>

#include "base/picture_box.h"
#include "views/graph_picture.h"
#include "views/graph_view.h"

// What a screen reader says of the graph: the time and the readings at the cursor, and which of the
// `samples` it is, counted from 1; an empty text without a cursor.
struct GraphValue {
  QString text{};
  int sample = 0;
  int samples = 0;
};

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

  // Said aloud where it is another sample than before.
  void show_value(const GraphValue& value);
  const GraphValue& value() const { return value_; }

  // The channel slot that is brought forward (GraphPicture); choosing it again ends it.
  void choose(int slot);
  std::optional<int> chosen() const { return picture_.forward(); }
  // A click on this part of the legend chooses the slot.
  void add_legend(QWidget& part, int slot);

 Q_SIGNALS:
  // A button was pressed at this x in twips.
  void MouseDown(float x);
  void cursor_step(CursorStep step);
  void zoom_step(bool in);
  void chosen_changed();
  // A screen reader asks for the sample of this number, counted from 0.
  void sample_wanted(int sample);
  // The copy key was pressed, or "Copy" chosen from the context menu.
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
