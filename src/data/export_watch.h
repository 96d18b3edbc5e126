// Detects an office application that is stuck in an export.
#pragma once

#include <QElapsedTimer>

class Automation;

class ExportWatch {
 public:
  explicit ExportWatch(const Automation& office) : office_(office) {}

  // Call this several times a second. Returns true when the application is stuck: it has neither
  // answered nor used the processor for 10 s, or it has used 60 s of processor time without an
  // answer, thirty times what saving the largest Recording takes. An application that is merely
  // slow, or on a busy machine, does not count as stuck.
  bool stuck();

 private:
  const Automation& office_;
  QElapsedTimer quiet_;
  std::int64_t answers_ = -1;
  std::int64_t processor_ms_ = 0;
  std::int64_t processor_ms_at_answer_ = 0;
};
