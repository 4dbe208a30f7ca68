#include "sim/live.h"

#include <algorithm>
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
