// What the simulated recorder measures: a made-up, smooth signal that tests can recompute.
#pragma once

#include <cstdint>
#include <functional>

namespace simulator {

// The raw value (8.8 fixed point, two's complement) of sample n, counted from 0 at the start of
// recording, on recorder channel 0..3.
using Signal = std::function<std::uint16_t(std::int64_t n, int channel)>;

// A slow and a quick wave around 4.50, 60.00, -18.00 and 45.00 on channels 0 to 3.
std::uint16_t demo_signal(std::int64_t n, int channel);

}  // namespace simulator
