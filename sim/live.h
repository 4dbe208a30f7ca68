// What moves in a meter: velocity over time and the path it has covered, as pure functions of the moment.
#pragma once

#include <string_view>
#include <vector>

#include "sim/bytes.h"

namespace sim {

enum class Wave { Still, Ramp, Step, Sine };

// Velocity of one channel, in m/s whatever the meter's unit system is.
struct Motion {
  Wave wave = Wave::Sine;
  double base = 1.2;       // m/s; middle of a sine, start of a ramp, lower level of a step
  double amplitude = 0.3;  // m/s; half the swing of a sine, height of a ramp or a step
  double period_s = 60;    // seconds; a ramp falls back, a step goes up in the middle
};

// A bit pattern of the RAS word that is on from `from_s` to `to_s` of every period.
struct RasPhase {
  std::uint16_t bits = 0;
  double period_s = 60;
  double from_s = 0;
  double to_s = 0;
};

// A motion with its covered path known at every moment without stepping there.
class Course {
 public:
  explicit Course(const Motion& motion);

  double Velocity(Micros at) const;
  // Metres covered forwards, and metres covered backwards (a number above 0), since moment 0.
  double Forward(Micros at) const { return Covered(forward_, at); }
  double Backward(Micros at) const { return Covered(backward_, at); }
  const Motion& motion() const { return motion_; }

 private:
  double At(double fraction) const;  // velocity at a fraction of the period
  double Covered(const std::vector<double>& sums, Micros at) const;

  Motion motion_;
  std::vector<double> forward_;  // running sums over one period, one entry a cell and a last one
  std::vector<double> backward_;
};

// The RAS word that a schedule gives at a moment.
std::uint16_t ScheduledRas(const std::vector<RasPhase>& schedule, Micros at);

// "still", "ramp", "step", "sine". False when it is none of them.
bool ParseWave(std::string_view word, Wave& out);

}  // namespace sim
