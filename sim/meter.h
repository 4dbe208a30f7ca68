// SPDX-License-Identifier: GPL-3.0-or-later
// One simulated flow meter: what stands in its registers, what a request does to them, what it answers.
//
// A meter has no clock. Whoever asks it says what time it is, and everything that moves (live values, totals,
// alarms, a store in progress) is a function of that time, so a test on virtual time gets the same answers
// every run.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string_view>

#include "sim/acoustics.h"
#include "sim/live.h"
#include "sim/memory.h"
#include "sim/registers.h"
#include "sim/waveform.h"

namespace sim {

inline constexpr int kChannels = 3;

// The live values of a channel. The first eight stand in the measured-value block, the others in the heat
// block.
enum class Quantity {
  Velocity,
  Flow,
  FlowPercent,
  PlusTotal,
  MinusTotal,
  PlusPulses,
  MinusPulses,
  Ras,
  ThermalFlow,
  ThermalPercent,
  HeatingTotal,
  CoolingTotal,
  HeatingPulses,
  CoolingPulses,
  SupplyTemp,
  ReturnTemp,
  TempDifference,
};

// "velocity", "flow", "percent", "plus", ... as the scenario and control words write them.
std::optional<Quantity> ParseQuantity(std::string_view word);
std::string QuantityWords();  // all of them, for a help text

struct MeterConfig {
  int specification = kFullSpecification;  // register 0148H; decides what the model has, see IsSingleChannel
  int path_mode = 0;                       // 03E8H: 0 one path, 1 two paths, 2 two pipes
  int unit_system = 0;                     // 0100H: 0 metric, 1 English
  int language = 0;                        // 0102H: 0 English, 1 Japanese, 2 German, 3 French, 4 Spanish
  int id_number = 1;                       // 0104H
  Micros store_time = 120'000;             // from the store request to idle
  Micros capture_time = 120'000;           // from the capture command to ready
  Micros restart_time =
      2'000'000;       // silence after a power cycle, a memory initialisation or a new specification
  unsigned seed = 1;   // how the process moves, and the noise on captured waves
  Micros started = 0;  // when the meter was switched on: totals count from here
  // About 60 % of the full scale that the meter comes with.
  std::array<Motion, 2> motions{{{Wave::Process, 1.14, 0.15, 3600}, {Wave::Process, 1.09, 0.15, 3600}}};
};

// The two spaces of registers: functions 03, 06 and 10H reach the one, function 04 the other.
enum class Space { Holding, Input };

// What an armed fault makes the meter itself do wrong with one request.
struct Quirks {
  std::optional<Micros> store_time;    // this store takes so long
  bool refuse_capture = false;         // answers the capture command with 0 instead of 10
  std::optional<Micros> capture_time;  // this capture takes so long
  bool fail_capture = false;           // the capture that begins here ends without samples
  bool stuck_capture = false;          // the capture that begins here never becomes ready
  bool ignore_write = false;           // answers as if it had written, and keeps what it had
};

class Meter {
 public:
  explicit Meter(const MeterConfig& config);

  // Answers one request. `request` is the frame without station and check: function, then its fields. The
  // answer has the same form; it is an exception (function with bit 7 set, code) where the request can't be
  // served: 1 unknown function, 2 register that this model doesn't have, 3 quantity or value out of range.
  // Empty while the meter restarts.
  Bytes Serve(std::span<const std::uint8_t> request, Micros now, const Quirks& quirks = {});

  // Power off and on: what was stored comes back, everything set since is lost, totals stay.
  // Silent for the restart time.
  void Restart(Micros now);

  // `channel` counts from 0. A channel or quantity that is out of range changes nothing.
  void SetMotion(int channel, const Motion& motion, Micros now);  // CH1 and CH2; CH3 is computed
  // Pins a live value: the given number (NaN, infinities and -0 as they are) stands in the register until
  // released.
  void SetLive(int channel, Quantity quantity, double value);
  void ReleaseLive(int channel, Quantity quantity);
  void SetRas(int channel, std::uint16_t word);
  void SetRasSchedule(int channel, std::vector<RasPhase> schedule);
  // Makes reserve, device, signal and range bits of all channels come and go.
  void RunAlarms();
  // The same as it is in life: one or two in ten minutes, for some seconds.
  void RunRareAlarms();

  // Puts a value into every register that an operator sets, no two alike where the register's range allows
  // it: numbers, signs and codes that the register takes. What the meter is (unit system, specification, path
  // mode) and its commands stay. Another seed gives other values.
  void Fill(unsigned seed, Micros now);
  // Sets the units of flow and total, of temperature, and of heat flow and total, as an operator who keeps
  // the ranges does: full scales and pulses are turned into the new units.
  void ChangeUnits(int flow, int temperature, int heat);
  // Registers `from` to `to` fail from now on: a request that touches one of them gets the exception `code`,
  // or no answer when it is 0, and isn't done.
  void BreakMemory(Space space, std::uint32_t from, std::uint32_t to, int code);
  void MendMemory() { broken_.clear(); }
  // Bytes that stand at an input register whatever is measured; no bytes let it go. False when the meter
  // doesn't have the register.
  bool PinInput(std::uint32_t address, const Bytes& data);

  // The two register spaces: holding (functions 03, 06, 10H) and input (04, as of the last request served).
  // Tests and scenarios read and poke them; no rule of the device applies to a poke.
  Memory& holding() { return holding_.memory; }
  Memory& input() { return input_; }
  bool IsStoring(Micros now) const { return now < store_done_; }
  const MeterConfig& config() const { return config_; }

 private:
  struct Totals {
    double plus = 0, minus = 0, heating = 0, cooling = 0;  // m3, m3, MJ, MJ
  };
  struct Flow {
    double velocity = 0;  // m/s
    double volume = 0;    // m3/s
  };
  struct Temperatures {
    double supply = 0, back = 0;  // degC
  };
  struct BrokenRange {
    Space space = Space::Holding;
    std::uint32_t from = 0, to = 0;
    int code = 0;
  };
  // A register whose writing makes the meter do something, and what.
  struct Command;

  Bytes ReadWords(std::span<const std::uint8_t> request, Micros now);
  Bytes WriteOne(std::span<const std::uint8_t> request, Micros now, const Quirks& quirks);
  Bytes WriteMany(std::span<const std::uint8_t> request, Micros now, const Quirks& quirks);
  const BrokenRange* BrokenAt(std::span<const std::uint8_t> request) const;
  // These give 0, or the code of an exception.
  int CheckRange(const Memory& memory, std::uint32_t address, std::uint32_t size) const;
  int CheckLimits(std::uint32_t address, std::span<const std::uint8_t> data) const;
  int Write(std::uint32_t address, std::span<const std::uint8_t> data, Micros now, const Quirks& quirks);

  void OnUnitSystem(Micros now, const Quirks& quirks);
  void OnSpecification(Micros now, const Quirks& quirks);
  void OnStore(Micros now, const Quirks& quirks);
  void OnInitialise(Micros now, const Quirks& quirks);
  void OnTest(Micros now, const Quirks& quirks);
  void OnTestEnd(Micros now, const Quirks& quirks);
  void OnCapture(Micros now, const Quirks& quirks);
  void OnAoCheck(Micros now, const Quirks& quirks);
  void OnPulseCheck(Micros now, const Quirks& quirks);
  void OnOutputCheck(Micros now, const Quirks& quirks);
  void ShowTestState();
  template <int channel>
  void OnZero(Micros now, const Quirks& quirks);
  template <int channel>
  void OnTotalMode(Micros now, const Quirks& quirks);

  void Advance(Micros now);
  void Initialise();
  void UseEnglishFactory();
  void ClearCommands();
  void BuildCourse(int channel);
  static std::uint32_t DistanceOf(int channel);
  int MeasuredChannels() const { return IsSingle() ? 1 : 2; }
  bool IsSingle() const { return IsSingleChannel(config_.specification); }
  bool IsEnglish() const { return holding_.memory.Word(0x0100) == 1; }

  void MapInput();
  void RefreshInput(Micros now);
  void PutMeasured(int channel, Micros now);
  void PutHeat(int channel, Micros now);
  void PutCondition(int channel, Micros now);
  SoundPath PathOf(int channel) const;
  Signal SignalOf(int channel, Micros now) const;
  double CourseArea(int channel) const;
  Flow FlowOf(int channel, Micros now) const;
  std::optional<double> CheckedOutput(int source) const;
  Temperatures MeasuredTemperatures(std::optional<Micros> now) const;
  double FlowPercent(int channel, const Flow& flow) const;
  Temperatures TemperaturesAt(std::optional<Micros> now) const;
  bool CountsCooling() const;
  Totals TotalsOf(int channel, Micros now) const;
  Totals Counted(int channel, Micros now) const;
  void SettleTotals(Micros now);
  double Pinned(int channel, Quantity quantity, double value) const;

  MeterConfig config_;
  Holding holding_;
  double factory_area_ = 0;  // m2, of the pipe that the meter comes with
  Memory stored_;
  Memory input_;
  int process_units_ = 0;  // unit system that the process settings are held in

  std::vector<Course> courses_;             // CH1 and CH2
  std::array<double, 2> zero_offset_{};     // m/s taken off since the zero was set
  std::array<Totals, kChannels> totals_{};  // as they stood at totals_since_
  Micros totals_since_;
  std::array<std::map<Quantity, double>, kChannels> pinned_;
  std::array<std::vector<RasPhase>, kChannels> schedules_;

  Micros silent_until_ = std::numeric_limits<Micros>::min();
  Micros store_done_ = std::numeric_limits<Micros>::min();
  std::optional<Memory> storing_;  // taken at the request, kept at its end
  std::optional<Micros> capture_ready_;
  int capture_outcome_ = 0;  // what 0168H reads then
  std::uint32_t captures_ = 0;
  std::optional<Micros> test_since_;
  bool output_checked_ = false;
  bool ao_checked_ = false;
  std::optional<Micros> pulses_since_;  // of the total pulse check
  std::vector<BrokenRange> broken_;
  std::map<std::uint32_t, Bytes> pinned_input_;
};

}  // namespace sim
