// Shows, while it lives, that a command waits for the recorder: by the wait cursor, and in words
// where the main window has room for them.
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
  QString before_;  // what a wait around this one has said
  WaitCursor cursor_;
};
