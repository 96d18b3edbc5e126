// Watches whether an office application gets on with an export.
#pragma once

#include <QElapsedTimer>

class Automation;

class ExportWatch {
 public:
  explicit ExportWatch(const Automation& office) : office_(office) {}

  // Looks now, which shall be done several times a second. True when the application is stuck: it
  // has neither answered nor used the processor for ten seconds, or it has used a minute of the
  // processor's time without an answer, thirty times what the largest Recording takes. A slow
  // application, or one on a busy machine, is not stuck.
  bool stuck();

 private:
  const Automation& office_;
  QElapsedTimer quiet_;
  std::int64_t answers_ = -1;
  std::int64_t processor_ms_ = 0;
  std::int64_t processor_ms_at_answer_ = 0;
};
