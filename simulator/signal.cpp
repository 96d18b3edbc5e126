#include "simulator/signal.h"

#include <array>

namespace simulator {

namespace {

struct Shape {
  std::int64_t level, slow_height, slow_period, quick_height, quick_period;
};

// Levels and heights are in 1/256 of the channel's unit, periods in samples. Different periods keep
// the channels apart from one another.
constexpr std::array<Shape, 4> shapes = {{{1152, 512, 1440, 64, 46},
                                          {15360, 2048, 1010, 128, 58},
                                          {-4608, 384, 1728, 96, 34},
                                          {11520, 1536, 1262, 160, 62}}};

// Two parabolas instead of a sine, in whole numbers, so that every machine gives the same values.
std::int64_t wave(std::int64_t n, std::int64_t height, std::int64_t period) {
  const std::int64_t half = period / 2;
  const std::int64_t phase = ((n % period) + period) % period;
  const std::int64_t x = phase % half;
  const std::int64_t bow = 4 * height * x * (half - x) / (half * half);
  return phase < half ? bow : -bow;
}

}  // namespace

std::uint16_t demo_signal(std::int64_t n, int channel) {
  const Shape& shape = shapes[static_cast<std::size_t>(channel) % shapes.size()];
  const std::int64_t raw = shape.level + wave(n, shape.slow_height, shape.slow_period) +
                           wave(n, shape.quick_height, shape.quick_period);
  return static_cast<std::uint16_t>(raw & 0xFFFF);
}

}  // namespace simulator
