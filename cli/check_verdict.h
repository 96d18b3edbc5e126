// The verdict of a check of the line.
#pragma once

#include <QString>

#include <map>

#include "cli/check_frames.h"

// The observations on a line.
struct Findings {
  int requests = 0;
  std::map<Outcome, int> outcomes;
  int late = 0;                // answers that arrived too late
  int channels = 0;            // of the recorder type asked for
  int answering_channels = 0;  // by the last right status answer; 0 if there was none
  QString refused_settings;    // settings that the port's driver refused
  bool lost = false;           // the port failed during the check

  int count(Outcome outcome) const;
};

struct Verdict {
  bool good = false;
  QString sentence;
  QString advice;
};

Verdict verdict_on(const Findings& findings, const QString& recorder);
