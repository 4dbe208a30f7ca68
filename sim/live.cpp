// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/live.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace sim {

namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr int kCells = 8192;
constexpr std::array<std::pair<std::string_view, Wave>, 5> kWaves{{
    {"still", Wave::Still},
    {"ramp", Wave::Ramp},
    {"step", Wave::Step},
    {"sine", Wave::Sine},
    {"process", Wave::Process},
}};

// Cycles in a period and their shares of the amplitude: drift first, then what a pump and a valve do. In an
// hour the fastest one takes three seconds.
constexpr std::array<std::pair<int, double>, 9> kProcess{{
    {1, 0.28},
    {3, 0.18},
    {7, 0.13},
    {19, 0.10},
    {47, 0.08},
    {101, 0.08},
    {211, 0.06},
    {397, 0.05},
    {1201, 0.04},
}};

struct Place {
  Micros period;
  Micros periods;  // whole ones that are over
  Micros into;     // how far the running one is
};

// In whole microseconds, so that an edge lies where it was put, however many periods have gone.
Place PlaceOf(double period_s, Micros at) {
  const Micros period = std::max<Micros>(std::llround(period_s * 1e6), 1);
  const Micros periods = (at >= 0 ? at : at - period + 1) / period;
  return {period, periods, at - periods * period};
}

double Fraction(const Place& place) {
  return static_cast<double>(place.into) / static_cast<double>(place.period);
}

}  // namespace

Course::Course(const Motion& motion) : motion_(motion) {
  if (!(motion_.period_s > 0)) motion_.period_s = 1;
  if (motion_.wave == Wave::Process) {
    std::uint32_t random = motion_.seed * 2654435761u + 1;
    for (const auto& [cycles, share] : kProcess) {
      random = random * 1664525u + 1013904223u;
      harmonics_.push_back({static_cast<double>(cycles), share, random / 4294967296.0});
    }
    one_way_ = motion_.base >= std::abs(motion_.amplitude);
    if (one_way_) return;
  }
  forward_.resize(kCells + 1);
  backward_.resize(kCells + 1);
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
      return motion_.base + motion_.amplitude * std::sin(kTurn * fraction);
    case Wave::Process: {
      double sum = 0;
      for (const Harmonic& part : harmonics_)
        sum += part.share * std::sin(kTurn * (part.cycles * fraction + part.phase));
      return motion_.base + motion_.amplitude * sum;
    }
    case Wave::Still:
      break;
  }
  return motion_.base;
}

double Course::Path(Micros at) const {
  const Place place = PlaceOf(motion_.period_s, at);
  const double fraction = Fraction(place);
  double sum = 0;
  for (const Harmonic& part : harmonics_) {
    const double swing =
        std::cos(kTurn * part.phase) - std::cos(kTurn * (part.cycles * fraction + part.phase));
    sum += part.share / part.cycles * swing;
  }
  const double whole = motion_.base * (static_cast<double>(place.periods) + fraction);
  return motion_.period_s * (whole + motion_.amplitude * sum / kTurn);
}

double Course::Velocity(Micros at) const { return At(Fraction(PlaceOf(motion_.period_s, at))); }

double Course::Covered(const std::vector<double>& sums, Micros at) const {
  const Place place = PlaceOf(motion_.period_s, at);
  const double cells = Fraction(place) * kCells;
  const int cell = static_cast<int>(cells);
  const double before = static_cast<double>(place.periods) * sums[kCells] + sums[cell];
  return before + (sums[cell + 1] - sums[cell]) * (cells - cell);
}

std::uint16_t ScheduledRas(const std::vector<RasPhase>& schedule, Micros at) {
  std::uint16_t word = 0;
  for (const RasPhase& phase : schedule) {
    const double seconds = static_cast<double>(PlaceOf(phase.period_s, at).into) / 1e6;
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
