// Shows, while it lives, that a command is waiting for the recorder: by the wait cursor, and in
// words in the status bar's tool tip.
#pragma once

#include <QString>

#include "base/wait_cursor.h"

class Shell;

class Waiting {
 public:
  // `what` is a sentence for the user, such as "Reading the recorder's properties."
  Waiting(Shell& shell, const QString& what);
  ~Waiting();
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  Shell& shell_;
  QString before_;  // the text of the wait around this one
  WaitCursor cursor_;
};
