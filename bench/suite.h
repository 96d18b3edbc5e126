// Measures the program against peers that do the same work, side by side in one run. What counts is
// the ratio of the two times; the times differ from machine to machine.
#pragma once

#include <functional>
#include <optional>
#include <string>

// The processor time that one run of `work` takes, in milliseconds. Unlike the time on the clock it
// does not favour the shorter side on a busy machine. The caller prepares before and clears away
// after, outside the measured time.
double milliseconds(const std::function<void()>& work);

// One side of a comparison: gives the milliseconds of one run, or nothing if it cannot run here.
using Side = std::function<std::optional<double>()>;

// Work of many seconds is measured once per side, without a run to warm up.
enum class Repeat { often, once };

class Suite {
 public:
  // `short_run`: fewer repetitions, for a quick check that nothing has become slow. `only`: leaves
  // out every benchmark whose name does not contain it.
  Suite(bool short_run, std::string only) : short_run_(short_run), only_(std::move(only)) {}

  bool short_run() const { return short_run_; }

  // Runs both sides in turn and prints a line with the medians and their ratio, which should be at
  // most `most`. A ratio up to a quarter above that counts as noise. Beyond it both sides are
  // measured once more; the benchmark fails if the second ratio is beyond it too.
  void compare(const std::string& name, const Side& ours, const std::string& peer_name,
               const Side& peer, double most, Repeat repeat = Repeat::often);

  // begin() prints the table's head; end() gives 1 if a benchmark failed, else 0.
  void begin() const;
  int end() const;

 private:
  struct Medians {
    double ours;
    double peer;
    double ratio() const { return ours / peer; }
  };
  std::optional<Medians> measure(const Side& ours, const Side& peer, int repetitions) const;

  bool short_run_;
  std::string only_;
  int failures_ = 0;
};
