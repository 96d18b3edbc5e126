// The Real-time Data window: what the linked recorder is, holds and is set to, and what it
// measures now.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>

#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "base/child_window.h"
#include "base/interval_timer.h"
#include "monitor/live_monitor.h"
#include "monitor/live_view.h"
#include "views/graph_surface.h"

class QLayout;
class Shell;
enum class RecorderTask;
enum class StartupType;
struct PatternSettings;

class frmrealtime : public ChildWindow {
  Q_OBJECT

 public:
  frmrealtime(Shell& shell, QWidget* parent);

  // Sets the online-record settings to their defaults and reads the recorder. Waits for it: the
  // window can be unloaded meanwhile.
  void Form_Load();

  // Shows what the recorder now holds. A request that fails three times leaves the rest as it was.
  // While another task has the recorder the window waits and fills itself when it is free.
  void RefreshFromRecorder();

  // What the window says to others: the recorder's title, and the channels 0..3 that are marked to
  // take part in the recording, in ascending order.
  QString recorder_title() const { return Text6->text(); }
  std::vector<int> recorded_channels() const;
  // Stops the polling timer; switches it on again.
  void pause_polling() { Timer1->set_enabled(false); }
  void resume_polling() { Timer1->set_enabled(true); }

  // Draws the live graph afresh, at the place where the slider stands.
  void RedrawGraph();

  // Lets the display limits of the historical graph be edited; this window's graph keeps its fixed
  // scale. The window's counterpart of the menu's command, which goes to the historical graph.
  void ShowDisplayLimits();

  // Leaves the live sheet with its header alone; the buffer and the alarms stay.
  void clear_live_sheet();

  // "Recorder Status"
  QLineEdit* Text6;  // title
  QLineEdit* Text5;  // model name
  QLineEdit* Text4;  // battery
  QLineEdit* Text2;  // state
  // "Recorder Pattern"
  QComboBox* Combo2;    // startup type
  QLineEdit* Text3;     // startup time
  QDateTimeEdit* DTP2;  // startup delay
  QDateTimeEdit* DTP1;  // record interval
  QComboBox* Combo3;    // stop type
  QLineEdit* Text11;    // readings held
  QLineEdit* Text14;    // all data
  // Behind the two pickers: no picker role of their own, and never sent.
  QLineEdit* Text12;
  QLineEdit* Text13;
  // "Recorder Description"
  QLineEdit* Text15;
  // A tab a channel: up limit 2c, down limit 2c + 1, takes part in recording c.
  QTabWidget* SSTab1;
  std::array<QLineEdit*, 8> Text1{};
  std::array<QCheckBox*, 4> Check1{};
  QPushButton* Command4;  // "Properties Set"

  // Nine labels a channel: element 9c + ChannelLabel.
  std::array<QLabel*, 36> Label4{};

  // The live tabs: graph, live sheet, alarm sheet.
  QTabWidget* SSTab3;
  GraphSurface* Pic1;
  std::array<QFrame*, 4> Line1{};  // legend, a line a channel
  std::array<QLabel*, 4> Label3{};
  QLabel* saved_label;  // where the last automatic save went; hidden before the first
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

  LiveMonitor& live() { return live_; }
  const LiveView& view() const { return view_; }

 protected:
  void Form_Unload() override;

 private:
  void build();
  QLayout* build_properties();
  QGroupBox* build_status();
  QGroupBox* build_pattern();
  QGroupBox* build_description();
  QTabWidget* build_channels();
  QWidget* build_readings();
  QTabWidget* build_live_tabs();
  QWidget* build_graph_page();
  QLayout* build_legend(QWidget* page);
  static QWidget* build_scale(QWidget* page);
  void build_cursor();

  void Command4_Click();
  void Timer1_Timer();
  void cmd_Click(int index);
  void Pic1_MouseDown(float x);
  void Pic1_KeyDown(CursorStep step);

  // One use of the recorder by a handler of this window.
  class Session;
  void read_recorder(const Session& session);
  bool read_properties(const Session& session);
  bool read_texts(const Session& session);
  bool read_battery(const Session& session);
  bool read_limits(const Session& session);
  void refresh_if_due();
  void lay_out_live();

  void set_properties(const Session& session);
  PatternSettings typed_settings() const;
  bool take_typed(const PatternSettings& settings);
  bool write_all(const Session& session, StartupType startup_type);
  bool write_limits(const Session& session, int channel);
  // Sends a request, three times if need be, and tells the user when nobody answers.
  bool write(const Session& session, const std::function<int()>& build);
  void restart_polling();

  void take_reading(const LiveReading& reading);
  void save_automatically();
  void tell_saved(const QString& text, bool failed);
  std::array<AlarmLimits, 4> typed_limits() const;
  void show_readings();
  static void show_alarm(QLabel& label, bool alarmed);
  std::optional<int> cursor_slot() const;
  void place_cursor();
  void place_cursor_label(QLabel& label, double cursor) const;

  Shell& shell_;
  LiveMonitor live_;
  LiveView view_;
  // The reading at the cursor, counted from the first one since the window opened.
  std::optional<std::int64_t> cursor_;
  bool refresh_due_ = false;
};
