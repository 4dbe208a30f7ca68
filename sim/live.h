// SPDX-License-Identifier: GPL-3.0-or-later
// What moves in a meter: velocity over time and the path it has covered, as pure functions of the moment.
#pragma once

#include <string_view>
#include <vector>

#include "sim/bytes.h"

namespace sim {

// Process is a plant at work: it drifts and it is never quite still. Its volume flow is what counts, so that
// a pipe of another width gives another velocity and the same flow.
enum class Wave { Still, Ramp, Step, Sine, Process };

// Velocity of one channel, in m/s whatever the meter's unit system is.
struct Motion {
  Wave wave = Wave::Sine;
  double base = 1.2;  // m/s; middle of a sine, start of a ramp, lower level of a step, mean of a process
  double amplitude =
      0.3;  // m/s; half the swing of a sine, height of a ramp or a step, most that a process strays
  double period_s = 60;  // seconds; a ramp falls back, a step goes up in the middle, a process repeats itself
  std::uint32_t seed = 1;  // which of all processes it is
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
  double Forward(Micros at) const { return one_way_ ? Path(at) : Covered(forward_, at); }
  double Backward(Micros at) const { return one_way_ ? 0 : Covered(backward_, at); }
  const Motion& motion() const { return motion_; }

 private:
  double At(double fraction) const;  // velocity at a fraction of the period
  double Covered(const std::vector<double>& sums, Micros at) const;
  double Path(Micros at) const;  // of a process that never turns round

  // A process is a sum of sines with whole numbers of cycles in its period.
  struct Harmonic {
    double cycles, share, phase;  // a period, of the amplitude, as a fraction of a cycle
  };

  Motion motion_;
  std::vector<Harmonic> harmonics_;
  bool one_way_ = false;
  std::vector<double> forward_;  // running sums over one period, one entry a cell and a last one
  std::vector<double> backward_;
};

// The RAS word that a schedule gives at a moment.
std::uint16_t ScheduledRas(const std::vector<RasPhase>& schedule, Micros at);

// "still", "ramp", "step", "sine", "process". False when it is none of them.
bool ParseWave(std::string_view word, Wave& out);

}  // namespace sim
