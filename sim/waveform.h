// A received wave as the capture command leaves it in the input registers.
#pragma once

#include <array>
#include <cstdint>

namespace sim {

inline constexpr int kWaveSamples = 1024;

// `kind`: 1 up and 2 down received, 3 up and 4 down filtered, 5 correlation; 6 to 10 the same of CH2. The
// noise depends on `seed` alone.
std::array<std::int32_t, kWaveSamples> CaptureWave(int kind, std::uint32_t seed);

}  // namespace sim
