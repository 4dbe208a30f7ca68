#include "sim/waveform.h"

#include <cmath>
#include <numbers>

namespace sim {

namespace {

// What a kind looks like: a burst under a bell, `period` samples a cycle.
struct Shape {
  double height;
  double centre;
  double width;
  double period;
  double noise;
};

constexpr Shape kShapes[] = {
    {3000, 480, 60, 16, 40},      // up received
    {2900, 484, 60, 16, 40},      // down received
    {190000, 480, 75, 16, 300},   // up filtered
    {184000, 484, 75, 16, 300},   // down filtered
    {850000, 512, 110, 32, 500},  // correlation
};

}  // namespace

std::array<std::int32_t, kWaveSamples> CaptureWave(int kind, std::uint32_t seed) {
  const Shape& shape = kShapes[(kind - 1) % 5];
  const double shift = kind > 5 ? 30 : 0;
  std::array<std::int32_t, kWaveSamples> samples{};
  std::uint32_t random = seed * 2654435761u + static_cast<std::uint32_t>(kind);
  for (int i = 0; i < kWaveSamples; ++i) {
    random = random * 1664525u + 1013904223u;
    const double noise = shape.noise * (random / 4294967296.0 * 2 - 1);
    const double x = i - shape.centre - shift;
    const double bell = std::exp(-x * x / (2 * shape.width * shape.width));
    const double wave = shape.height * bell * std::cos(2 * std::numbers::pi * x / shape.period);
    samples[i] = static_cast<std::int32_t>(std::lround(wave + noise));
  }
  return samples;
}

}  // namespace sim
