// Standard output and standard error.
#pragma once

#include <QString>

// Writes to standard output at once. Throws Failure when that fails, as on a full disk. Once the
// reader has closed the pipe nothing more is written, and the exit status stays what it would have
// been.
void print(const QString& text);
bool output_has_reader();

// "corvane-cli: SENTENCE" on standard error.
void complain(const QString& sentence);

// A bar on standard error, if that is a terminal. The destructor erases it.
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
