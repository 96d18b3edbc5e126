// What a check of the line comes to.
#pragma once

#include <QString>

#include <map>

#include "cli/check_frames.h"

// What was seen of a line.
struct Findings {
  int requests = 0;
  std::map<Outcome, int> outcomes;
  int late = 0;                // answers that came after their time
  int channels = 0;            // asked for
  int answering_channels = 0;  // as the status answers show; 0 where none was whole
  QString refused_settings;    // what the port's driver would not do
  bool lost = false;           // the port failed in the middle

  int count(Outcome outcome) const;
};

struct Verdict {
  bool good = false;
  QString sentence;
  QString advice;
};

Verdict verdict_on(const Findings& findings, const QString& recorder);
