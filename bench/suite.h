// Measures the program against peers that do the same work, side by side in one run: what counts
// is the ratio of the two times, not the times, which differ from machine to machine.
#pragma once

#include <functional>
#include <optional>
#include <string>

// One measured run: the processor time that `work` takes, in milliseconds. Unlike the time on the
// clock it does not favour the shorter side on a busy machine. What `work` needs is made ready
// before and cleared away after, outside the time.
double milliseconds(const std::function<void()>& work);

// One side of a comparison: a run, and its time in milliseconds. Nothing when it cannot run here.
using Side = std::function<std::optional<double>()>;

// Work of many seconds is measured once a side, without a run to warm up.
enum class Repeat { Often, Once };

class Suite {
 public:
  // `short_run`: fewer repetitions, for a quick check that nothing has become slow. `only`: leaves
  // out every benchmark whose name does not contain it.
  Suite(bool short_run, std::string only) : short_run_(short_run), only_(std::move(only)) {}

  bool short_run() const { return short_run_; }

  // Runs both sides in turns and prints a line with the medians and their ratio, which shall be at
  // most `most`. A ratio up to a quarter above is taken for noise; beyond that all is measured once
  // more, and only what is beyond it twice has failed.
  void compare(const std::string& name, const Side& ours, const std::string& peer_name,
               const Side& peer, double most, Repeat repeat = Repeat::Often);

  // Prints the table's head; 0 or, when a benchmark failed, 1.
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
