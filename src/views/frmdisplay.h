// The Historical Data window.
#pragma once

#include "app/child_window.h"

class Shell;

class frmdisplay : public ChildWindow {
  Q_OBJECT

 public:
  explicit frmdisplay(Shell& shell);

  // Zoom in (1) or out (0).
  void cmd_Click(int index);
  // Display Limit Set.
  void cmd2_Click();
  // Display Time Set.
  void Cmd6_Click();
  void RedrawGraph();
};
