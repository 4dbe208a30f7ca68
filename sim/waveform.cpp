// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/waveform.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {

namespace {

constexpr double kCycle = 20;          // samples of a cycle at 1 MHz
constexpr double kRise = 45;           // samples from a burst's begin to its peak
constexpr double kFilterDelay = 12;    // samples
constexpr double kReceivedNoise = 40;  // counts, whatever the signal's strength: it comes from the amplifier
constexpr double kFilteredNoise = 300;
constexpr double kCorrelationNoise = 500;
constexpr double kCorrelationHeight = 850'000;  // of two filtered waves at their full height
constexpr double kFullFiltered = 190'000;
constexpr double kCorrelationCycle = kCycle * kSamplePeriod / kCorrelationStep;
constexpr double kCorrelationWidth = 0.45 * kCorrelationCycle;

// A burst rises quickly and rings out, 1 at its peak; `x` counts samples from its begin.
double Burst(double x) {
  if (x <= 0) return 0;
  const double t = x / kRise;
  const double bell = t * t * std::exp(2 * (1 - t));
  return bell * std::cos(2 * std::numbers::pi * (x - kRise) / kCycle);
}

// The filter passes one frequency: the burst is as long before its peak as behind it.
double Filtered(double x) {
  const double t = (x - kRise - kFilterDelay) / (1.2 * kRise);
  return std::exp(-t * t / 2) * std::cos(2 * std::numbers::pi * (x - kRise - kFilterDelay) / kCycle);
}

double Correlation(double x) {
  return std::exp(-x * x / (2 * kCorrelationWidth * kCorrelationWidth)) *
         std::cos(2 * std::numbers::pi * x / kCorrelationCycle);
}

// One sample of a kind, counted from 0, without its noise.
double Sample(int kind, const Signal& signal, int at) {
  constexpr double kMostShift = 450;
  const double half = std::clamp(signal.difference / 2 / kSamplePeriod, -300.0, 300.0);
  const double up = at - kArrivalSample + half, down = at - kArrivalSample - half;
  // The sound that went round the pipe once more comes late and weak.
  constexpr double kEcho = 0.06, kEchoLater = 330;
  switch (kind) {
    case 0:
      return signal.up * (Burst(up) + kEcho * Burst(up - kEchoLater));
    case 1:
      return signal.down * (Burst(down) + kEcho * Burst(down - kEchoLater));
    case 2:
      return signal.filtered_up * Filtered(up);
    case 3:
      return signal.filtered_down * Filtered(down);
    default:
      break;
  }
  const double height =
      kCorrelationHeight * (signal.filtered_up / kFullFiltered) * (signal.filtered_down / kFullFiltered);
  const double shift = std::clamp(signal.difference / kCorrelationStep, -kMostShift, kMostShift);
  return height * Correlation(at - kCorrelationCentre - shift);
}

}  // namespace

std::array<std::int32_t, kWaveSamples> CaptureWave(int kind, const Signal& signal, std::uint32_t seed) {
  static constexpr double kNoise[] = {kReceivedNoise, kReceivedNoise, kFilteredNoise, kFilteredNoise,
                                      kCorrelationNoise};
  const int form = (kind - 1) % 5;
  std::array<std::int32_t, kWaveSamples> samples{};
  std::uint32_t random = seed * 2654435761u + static_cast<std::uint32_t>(kind);
  for (int i = 0; i < kWaveSamples; ++i) {
    random = random * 1664525u + 1013904223u;
    const double noise = kNoise[form] * (random / 4294967296.0 * 2 - 1);
    samples[i] = static_cast<std::int32_t>(std::lround(Sample(form, signal, i) + noise));
  }
  return samples;
}

}  // namespace sim
