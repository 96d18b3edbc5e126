// The Real-time Data window: shows the linked recorder's properties and its live readings. Its two
// panes hold the controls; the window decides when they read the recorder, set it and poll.
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

  // Sets the online-record settings to their defaults, then reads the recorder. The window can be
  // unloaded while it waits for the answers.
  void Form_Load();

  // Reads the recorder and shows what it holds. A request that fails three times ends this; the
  // rest stays as it was. If another task has the recorder, reads it as soon as it is free.
  void RefreshFromRecorder();

  // For other folders: the recorder's title, and the channels 0..3 that are marked to take part in
  // the recording, in ascending order.
  QString recorder_title() const;
  std::vector<int> recorded_channels() const;
  // Stop the polling timer, returning whether it was on, and start it again.
  bool pause_polling();
  void resume_polling();

  // Redraws the live graph at the slider's position.
  void RedrawGraph();

  // Opens the dialog for the historical graph's display limits, then redraws this window's graph,
  // which keeps its fixed scale. The menu's command goes to the Historical Data window instead.
  void ShowDisplayLimits();

  // Applies the Online Record settings to the polling timer and clears the live sheet.
  void apply_online_settings();

  // Only for this folder and for tests: other folders do not touch the controls.
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
