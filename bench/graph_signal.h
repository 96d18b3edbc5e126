// The two signals of the graph benchmarks, for the program and its peers alike: smooth curves with
// a little noise, and noise over the whole scale.
#pragma once

#include <cmath>
#include <cstdint>

inline constexpr int graph_samples = 30001;
inline constexpr int graph_channels = 4;
inline constexpr int graph_width = 513;
inline constexpr int graph_height = 510;
inline constexpr float graph_high = 120;
inline constexpr float graph_low = -40;

// Pseudo-random, -1 .. 1, the same at every call.
inline float unrest(int sample, int channel) {
  auto bits = static_cast<std::uint32_t>(sample * 4 + channel) * 2654435761U;
  bits = (bits ^ (bits >> 15)) * 2246822519U;
  bits ^= bits >> 13;
  return static_cast<float>(bits % 20001) / 10000.0F - 1.0F;
}

inline float graph_value(bool noise, int sample, int channel) {
  if (noise) return 40.0F + 80.0F * unrest(sample, channel);
  const float turn = static_cast<float>(sample) / 5000.0F * static_cast<float>(channel + 1);
  return 10.0F + 25.0F * static_cast<float>(channel) + 12.0F * std::sin(turn) +
         0.1F * unrest(sample, channel);
}
