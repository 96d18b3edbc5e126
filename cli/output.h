// Standard output and standard error.
#pragma once

#include <QString>

// Writes to standard output at once. Throws Failure when it cannot be written, as on a full disk. A
// reader that has gone has had enough: from then on nothing is written, and the command's status is
// what it would have been.
void print(const QString& text);
bool output_has_reader();

// "corvane-cli: SENTENCE" on standard error.
void complain(const QString& sentence);

// A bar on standard error, if that is a terminal; it goes away with the object.
class ProgressBar {
 public:
  ProgressBar();
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void show(int done, int total);

 private:
  bool on_terminal_;
  bool shown_ = false;
};
