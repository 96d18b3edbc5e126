#include "suite.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

constexpr int repetitions_full = 41;
constexpr int repetitions_short = 9;
constexpr double noise = 1.25;

double median(std::vector<double>& times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

// Vector registers that a library left half used slow down every later floating-point instruction,
// by chance for one side more than for the other.
void clear_vector_registers() {
#ifdef __x86_64__
  if (__builtin_cpu_supports("avx")) asm volatile("vzeroupper");
#endif
}

}  // namespace

double milliseconds(const std::function<void()>& work) {
  clear_vector_registers();
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

std::optional<Suite::Medians> Suite::measure(const Side& ours, const Side& peer,
                                             int repetitions) const {
  std::vector<double> our_times;
  std::vector<double> peer_times;
  const bool warm_up = repetitions > 1;
  for (int i = warm_up ? -1 : 0; i < repetitions; ++i) {
    const auto our_time = ours();
    const auto peer_time = peer();
    if (!our_time || !peer_time) return std::nullopt;
    if (i < 0) continue;
    our_times.push_back(*our_time);
    peer_times.push_back(*peer_time);
  }
  return Medians{.ours = median(our_times), .peer = median(peer_times)};
}

void Suite::compare(const std::string& name, const Side& ours, const std::string& peer_name,
                    const Side& peer, double most, Repeat repeat) {
  if (name.find(only_) == std::string::npos) return;
  std::printf("%-34s %-44s ", name.c_str(), peer_name.c_str());
  std::fflush(stdout);
  const bool once = repeat == Repeat::once;
  auto medians = measure(ours, peer, once ? 1 : short_run_ ? repetitions_short : repetitions_full);
  if (medians && medians->ratio() > most * noise) {
    medians = measure(ours, peer, once ? 1 : repetitions_full);
  }
  if (!medians) {
    std::puts("skipped: it or its peer cannot run here");
    return;
  }
  const bool failed = medians->ratio() > most * noise;
  const char* verdict = failed ? "FAILED" : medians->ratio() > most ? "within noise" : "";
  std::printf("%9.3f %9.3f %7.3f  <= %5.3f %s\n", medians->ours, medians->peer, medians->ratio(),
              most, verdict);
  std::fflush(stdout);
  failures_ += failed;
}

void Suite::begin() const {
  std::printf("%-34s %-44s %9s %9s %7s  %8s\n", "benchmark", "peer", "ours, ms", "peer, ms",
              "ratio", "wanted");
}

int Suite::end() const {
  if (failures_ > 0) std::printf("%d failed\n", failures_);
  return failures_ > 0 ? 1 : 0;
}
