#include "sim/live.h"

#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace sim {

namespace {

constexpr int kCells = 2048;
constexpr std::array<std::pair<std::string_view, Wave>, 4> kWaves{{
    {"still", Wave::Still},
    {"ramp", Wave::Ramp},
    {"step", Wave::Step},
    {"sine", Wave::Sine},
}};

// Whole periods before `at`, and the part of the running one as a fraction from 0 to 1.
std::pair<double, double> Split(double period_s, Micros at) {
  const double periods = static_cast<double>(at) / (period_s * 1e6);
  const double whole = std::floor(periods);
  return {whole, periods - whole};
}

}  // namespace

Course::Course(const Motion& motion) : motion_(motion), forward_(kCells + 1), backward_(kCells + 1) {
  if (!(motion_.period_s > 0)) motion_.period_s = 1;
  const double cell = motion_.period_s / kCells;
  for (int i = 0; i < kCells; ++i) {
    const double path = At((i + 0.5) / kCells) * cell;
    forward_[i + 1] = forward_[i] + std::max(path, 0.0);
    backward_[i + 1] = backward_[i] + std::max(-path, 0.0);
  }
}

double Course::At(double fraction) const {
  switch (motion_.wave) {
    case Wave::Ramp:
      return motion_.base + motion_.amplitude * fraction;
    case Wave::Step:
      return motion_.base + (fraction < 0.5 ? 0 : motion_.amplitude);
    case Wave::Sine:
      return motion_.base + motion_.amplitude * std::sin(2 * std::numbers::pi * fraction);
    case Wave::Still:
      break;
  }
  return motion_.base;
}

double Course::Velocity(Micros at) const { return At(Split(motion_.period_s, at).second); }

double Course::Covered(const std::vector<double>& sums, Micros at) const {
  const auto [whole, fraction] = Split(motion_.period_s, at);
  const double place = fraction * kCells;
  const int cell = std::min(static_cast<int>(place), kCells - 1);
  return whole * sums[kCells] + sums[cell] + (sums[cell + 1] - sums[cell]) * (place - cell);
}

std::uint16_t ScheduledRas(const std::vector<RasPhase>& schedule, Micros at) {
  std::uint16_t word = 0;
  for (const RasPhase& phase : schedule) {
    const double seconds = Split(phase.period_s, at).second * phase.period_s;
    if (seconds >= phase.from_s && seconds < phase.to_s) word |= phase.bits;
  }
  return word;
}

bool ParseWave(std::string_view word, Wave& out) {
  for (const auto& [name, wave] : kWaves) {
    if (name != word) continue;
    out = wave;
    return true;
  }
  return false;
}

}  // namespace sim
