// The Historical Data window: the Recording as an information list, a graph and a sheet.
#pragma once

#include <array>

#include "base/child_window.h"
#include "views/graph_layout.h"
#include "views/graph_surface.h"

class QFrame;
class QLabel;
class QPushButton;
class QSlider;
class QTabWidget;
class QTableView;
class QTreeWidget;
class Shell;

class frmdisplay final : public ChildWindow {
  Q_OBJECT

 public:
  frmdisplay(Shell& shell, QWidget* parent);

  // Shows the Recording as it is now.
  void Form_Load();

  // Draws the view that the slider and User::recording.ViewCount select.
  void RedrawGraph();
  // Zooms in (1) or out (0).
  void cmd_Click(int index);
  // Display Limit Set.
  void cmd2_Click();
  // Display Time Set.
  void Cmd6_Click();

  // First and last sample in view.
  std::int32_t ViewStart = 0;
  std::int32_t ViewEnd = 0;

  QTreeWidget* lv1;
  QTabWidget* SSTab1;
  QTableView* MSFlG1;
  GraphSurface* Pic1;
  QSlider* Slider1;
  // Times of the first and of the last sample in view.
  QLabel* Label1;
  QLabel* Label2;
  // Scales: nine labels per channel slot, from top to bottom.
  std::array<QLabel*, 4 * labels_per_scale> Label4{};
  // Per channel slot c: [c] the scale's title, [c + 4] the legend, [c + 8] the value at the cursor.
  std::array<QLabel*, 12> Label3{};
  // Colour swatches of the legend.
  std::array<QFrame*, 4> Line1{};
  // The cursor and the time at it.
  QFrame* Line2;
  QLabel* Label5;
  std::array<QPushButton*, 2> cmd{};
  QPushButton* cmd2;
  QPushButton* Cmd6;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void build();
  QWidget* build_graph_page();
  void build_graph_labels(QWidget& page);
  void build_cursor();
  void build_buttons(QWidget& page);
  void build_sheet();
  void set_colours();
  void show_chosen();
  void arrange();
  GraphTextSizes measure_texts() const;

  void fill_list();
  void load_graph();
  void redraw();
  void redraw_channel(GraphCurves& curves, std::size_t slot);
  void show_no_curves(std::size_t from_slot);
  void show_at_cursor(std::int32_t sample);
  void hide_cursor();
  void place_cursor();
  void select_in_sheet(std::int32_t sample);
  void Pic1_MouseDown(float x);
  void Pic1_KeyDown(CursorStep step);
  void show_from(std::int32_t first);
  void move_cursor(std::int32_t sample);
  void copy_graph() const;

  float cursor_twips() const;

  Shell& shell_;
  GraphTextSizes text_sizes_;
  QSize arranged_page_;
  // The cursor's place: sample `sample` of a view of `view_count` samples. When the view changes,
  // the cursor keeps its place in the picture.
  struct Cursor {
    std::int32_t sample = 0;
    std::int32_t view_count = 2;
  };
  Cursor cursor_;
  bool cursor_shown_ = false;
  // True while the sheet follows the cursor, not the other way round.
  bool selecting_ = false;
};
