// The Real-time Data window: what the linked recorder is, holds and is set to, and what it
// measures now. Its two panes have the controls; the window says who does what when.
#pragma once

#include <vector>

#include "base/child_window.h"

class LivePane;
class RecorderSession;
class SetupPane;
class Shell;
struct PatternSettings;

class frmrealtime final : public ChildWindow {
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
  QString recorder_title() const;
  std::vector<int> recorded_channels() const;
  // Stops the polling timer and says whether it was on; switches it on again.
  bool pause_polling();
  void resume_polling();

  // Draws the live graph afresh, at the place where the slider stands.
  void RedrawGraph();

  // Lets the display limits of the historical graph be edited; this window's graph keeps its fixed
  // scale. The window's counterpart of the menu's command, which goes to the historical graph.
  void ShowDisplayLimits();

  // For the Online Record dialog: polls as its settings say, and clears the live sheet.
  void apply_online_settings();

  // For this folder and for tests; nobody else touches the controls.
  SetupPane& setup() { return *setup_; }
  LivePane& live() { return *live_; }

 protected:
  void Form_Unload() override;

 private:
  void Command4_Click();
  void set_properties(const RecorderSession& session);
  bool write_recorder(const RecorderSession& session, const PatternSettings& settings);
  void tell_failure();
  void read_recorder(const RecorderSession& session);
  void refresh_if_due();
  void restart_polling();

  Shell& shell_;
  SetupPane* setup_;
  LivePane* live_;
  bool refresh_due_ = false;
};
