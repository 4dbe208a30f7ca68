// SPDX-License-Identifier: GPL-3.0-or-later
// A received wave as the capture command leaves it in the input registers.
#pragma once

#include <array>
#include <cstdint>

namespace sim {

inline constexpr int kWaveSamples = 1024;

// The meter samples at 20 MHz; its window opens 20 us ahead of the sound.
inline constexpr double kSamplePeriod = 50e-9;        // s
inline constexpr int kArrivalSample = 400;            // where a burst begins in fluid at rest
inline constexpr double kCorrelationStep = 3.125e-9;  // s from one point of a correlation to the next
inline constexpr int kCorrelationCentre = 512;        // the point of no difference

// What reaches the sensors of a channel.
struct Signal {
  double up = 0, down = 0;                    // counts at the peaks of the received waves
  double filtered_up = 0, filtered_down = 0;  // at those of the filtered ones
  double difference = 0;                      // s by which the down wave comes later than the up wave
};

// `kind`: 1 up and 2 down received, 3 up and 4 down filtered, 5 correlation; 6 to 10 the same of CH2. The
// noise depends on `seed` alone.
std::array<std::int32_t, kWaveSamples> CaptureWave(int kind, const Signal& signal, std::uint32_t seed);

}  // namespace sim
