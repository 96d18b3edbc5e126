// The lower half of the Real-time Data window: polls the recorder and shows its live readings.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>

#include <array>
#include <optional>

#include "base/interval_timer.h"
#include "monitor/live_monitor.h"
#include "monitor/live_view.h"
#include "views/graph_surface.h"

class ChildWindow;
class QLayout;
class SetupPane;
class Shell;

class LivePane final : public QWidget {
  Q_OBJECT

 public:
  // `setup` holds the title and the limits. It and the window must outlive the pane.
  LivePane(Shell& shell, ChildWindow& window, const SetupPane& setup);

  // The labels of each channel c: element labels_per_channel * c + ChannelLabel.
  std::array<QLabel*, 4 * labels_per_channel> Label4{};

  // The live tabs: graph, live sheet, alarm sheet.
  QTabWidget* SSTab3;
  GraphSurface* Pic1;
  std::array<QFrame*, 4> Line1{};  // legend: one line for each channel
  std::array<QLabel*, 4> Label3{};
  QLabel* stale_label;  // the time of the last values; hidden unless the link is in error
  QLabel* saved_label;  // the last automatic save's path or failure; hidden before the first
  QFrame* Line2;        // cursor
  QLabel* Label5;       // time at the cursor
  QLabel* Label7;       // values at the cursor
  QLabel* Label1;       // time of the first reading shown
  QLabel* Label2;       // time of the last one
  QSlider* Slider1;
  std::array<QPushButton*, 2> cmd{};  // zoom out, zoom in
  QTableView* MSFlG1;
  QTableView* MSFlG2;

  // The polling timer.
  IntervalTimer* Timer1;

  LiveMonitor& monitor() { return monitor_; }
  const LiveView& view() const { return view_; }

  // Lays out the sheets and labels for the channels of the recorder type in use.
  void lay_out();
  // Shows the last readings beside the typed limits.
  void show_readings();
  // Removes all rows from the live sheet; the buffer and the alarms stay.
  void clear_sheet();
  // Redraws the graph at the slider's position.
  void RedrawGraph();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void build();
  QWidget* build_readings();
  QTabWidget* build_tabs();
  QWidget* build_graph_page();
  QLayout* build_legend(QWidget* page);
  static QWidget* build_scale(QWidget* page);
  void build_cursor();

  void Timer1_Timer();
  void cmd_Click(int index);
  void Pic1_MouseDown(float x);
  void Pic1_KeyDown(CursorStep step);
  void move_cursor(std::int64_t reading);

  void show_reading(const LiveReading& reading);
  void show_stale();
  void tell_alarm();
  bool alarms_in_sight() const;
  void mark_alarms(bool unseen);
  std::array<AlarmLimits, 4> typed_limits() const;
  void save_automatically();
  void tell_saved(const QString& text, bool failed);
  static void show_alarm(QLabel& label, bool alarmed);
  static void colour_alarm(QLabel& label);
  std::optional<int> cursor_slot() const;
  void place_cursor();
  void place_cursor_label(QLabel& label, double cursor) const;

  Shell& shell_;
  ChildWindow& window_;
  const SetupPane& setup_;
  LiveMonitor monitor_;
  LiveView view_;
  // The number of the reading at the cursor; 0 is the first one since the window opened.
  std::optional<std::int64_t> cursor_;
};
