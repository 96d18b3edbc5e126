// Faults that a simulated recorder can have.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace simulator {

// What the recorder sends back for one request.
struct Answer {
  QByteArray request;   // without its address byte
  QByteArray bytes;     // empty: the recorder keeps silent
  int delay_ms = 0;     // from the end of the request to the first byte
  bool unplug = false;  // the cable comes out after `bytes`
  QString remark;       // why the answer is not the usual one, for the log
};

enum class FaultKind {
  Silent,     // not heard: neither carried out nor answered
  Check,      // wrong check byte
  Extra,      // one extra leading byte
  Truncated,  // only the first `amount` bytes; half of them without an amount
  Late,       // begins `amount` ms late; 1500 without an amount
  Garbage,    // `amount` bytes of noise before the answer; 8 without an amount
  Unplug,     // the cable comes out after the first half
};

// A fault strikes every request that meets all conditions that are set.
struct Fault {
  FaultKind kind = FaultKind::Silent;
  std::optional<int> request = {};  // the n-th sound request since the start, from 1
  std::optional<int> block = {};    // reads of this block
  std::optional<int> command = {};  // requests with this command byte
  std::optional<int> first = {};    // at most this number of times
  std::optional<int> amount = {};
};

// The answer as the fault leaves it.
Answer spoil(Answer answer, const Fault& fault);

// Counts requests and strikes. If several faults would strike, the first in the list does.
class Faults {
 public:
  explicit Faults(const std::vector<Fault>& faults);
  // The fault that strikes this request, if any. To be called once for each request.
  std::optional<Fault> next(const QByteArray& request);

 private:
  struct Entry {
    Fault fault;
    int strikes = 0;
  };
  std::vector<Entry> entries_;
  int requests_ = 0;
};

// "truncated", "silent:first=3", "check:block=5,first=1", "late:request=7,ms=2000",
// "garbage:bytes=20", "silent:command=0A" (hexadecimal). No value for any other text.
std::optional<Fault> fault_from_text(const QString& text);

}  // namespace simulator
