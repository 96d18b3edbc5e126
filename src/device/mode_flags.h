// The mode flags, byte 0 of the recorder's pattern (docs/protocol.md).
#pragma once

#include <cstdint>

inline constexpr std::uint8_t running_flag = 0x02;  // only in answers
inline constexpr std::uint8_t delayed_flag = 0x04;
inline constexpr std::uint8_t start_flags = 0x88;  // only in requests
inline constexpr std::uint8_t wrap_flag = 0x40;
