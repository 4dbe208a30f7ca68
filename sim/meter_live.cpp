// SPDX-License-Identifier: GPL-3.0-or-later
// What moves in a meter: the input space and the numbers behind it.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "sim/addresses.h"
#include "sim/meter.h"
#include "sim/units.h"

namespace sim {

namespace {

using namespace address;

constexpr std::uint32_t kMeasuredSize = 38, kHeatSize = 56, kSampleSize = 4096;

struct QuantityName {
  std::string_view word;
  Quantity quantity;
};

constexpr QuantityName kQuantities[] = {
    {"velocity", Quantity::Velocity},
    {"flow", Quantity::Flow},
    {"percent", Quantity::FlowPercent},
    {"plus", Quantity::PlusTotal},
    {"minus", Quantity::MinusTotal},
    {"plus-pulses", Quantity::PlusPulses},
    {"minus-pulses", Quantity::MinusPulses},
    {"ras", Quantity::Ras},
    {"thermal", Quantity::ThermalFlow},
    {"thermal-percent", Quantity::ThermalPercent},
    {"heating", Quantity::HeatingTotal},
    {"cooling", Quantity::CoolingTotal},
    {"heating-pulses", Quantity::HeatingPulses},
    {"cooling-pulses", Quantity::CoolingPulses},
    {"supply", Quantity::SupplyTemp},
    {"return", Quantity::ReturnTemp},
    {"difference", Quantity::TempDifference},
};

// Measured temperatures in degC: a middle with a slow sine on it.
constexpr double kSupplyMean = 45, kSupplySwing = 0.8, kSupplyPeriod = 300;
constexpr double kReturnMean = 35, kReturnSwing = 0.5, kReturnPeriod = 240;

double Swing(double mean, double swing, double period_s, Micros now) {
  return mean + swing * std::sin(2 * std::numbers::pi * static_cast<double>(now) / (period_s * 1e6));
}

// A counter that wraps at 32 bits as the register does. A number that is none counts as 0.
std::int64_t Count(double value) {
  if (!std::isfinite(value) || std::abs(value) > 9e18) return 0;
  return static_cast<std::int64_t>(std::floor(value));
}

double Percent(double value, double full_scale) { return full_scale == 0 ? 0 : 100 * value / full_scale; }

std::int64_t Scaled(double value, double scale) { return std::llround(value * scale); }

double Degrees(double radians) { return radians * 180 / std::numbers::pi; }

}  // namespace

std::optional<Quantity> ParseQuantity(std::string_view word) {
  for (const QuantityName& name : kQuantities) {
    if (name.word == word) return name.quantity;
  }
  return std::nullopt;
}

std::string QuantityWords() {
  std::string words;
  for (const QuantityName& name : kQuantities) {
    if (!words.empty()) words += ' ';
    words += name.word;
  }
  return words;
}

void Meter::SetMotion(int channel, const Motion& motion, Micros now) {
  if (channel < 0 || channel > 1) return;
  SettleTotals(now);
  config_.motions[channel] = motion;
  BuildCourse(channel);
}

void Meter::SetLive(int channel, Quantity quantity, double value) {
  if (channel >= 0 && channel < kChannels) pinned_[channel][quantity] = value;
}

void Meter::ReleaseLive(int channel, Quantity quantity) {
  if (channel >= 0 && channel < kChannels) pinned_[channel].erase(quantity);
}

void Meter::SetRas(int channel, std::uint16_t word) { SetLive(channel, Quantity::Ras, word); }

void Meter::SetRasSchedule(int channel, std::vector<RasPhase> schedule) {
  if (channel >= 0 && channel < kChannels) schedules_[channel] = std::move(schedule);
}

void Meter::RunAlarms() {
  SetRasSchedule(0, {{0x0010, 60, 20, 30}, {0x4000, 60, 25, 40}});
  SetRasSchedule(1, {{0x0040, 90, 10, 20}, {0x0001, 90, 70, 75}});
  SetRasSchedule(2, {{0x8000, 120, 60, 80}, {0x0100, 120, 110, 115}});
}

void Meter::RunRareAlarms() {
  SetRasSchedule(0, {{0x0800, 570, 301, 309}, {0x0002, 610, 95, 99}});
  SetRasSchedule(1, {{0x0400, 590, 402, 408}});
  SetRasSchedule(2, {{0x0100, 590, 402, 408}});
}

double Meter::Pinned(int channel, Quantity quantity, double value) const {
  const auto found = pinned_[channel].find(quantity);
  return found == pinned_[channel].end() ? value : found->second;
}

void Meter::BuildCourse(int channel) {
  Motion motion = config_.motions[channel];
  motion.base -= zero_offset_[channel];
  motion.seed += config_.seed * 2 + static_cast<std::uint32_t>(channel);
  courses_[channel] = Course(motion);
}

SoundPath Meter::PathOf(int channel) const {
  return PathFor(holding_.memory, DistanceOf(channel), IsEnglish());
}

// Cross section in which the course of a channel moves, m2: of the pipe as it is set, but a process knows
// only its own.
double Meter::CourseArea(int channel) const {
  return config_.motions[channel].wave == Wave::Process ? factory_area_ : PathOf(channel).Area();
}

Meter::Flow Meter::FlowOf(int channel, Micros now) const {
  const Memory& memory = holding_.memory;
  if (channel < 2) {
    const double area = PathOf(channel).Area();
    double velocity = courses_[channel].Velocity(now) * CourseArea(channel) / area;
    if (test_since_) {
      // The test input approaches its value evenly over the tracking time.
      const double since = static_cast<double>(now - *test_since_) / 1e6;
      const double share = std::min(since / std::max<double>(memory.Word(kTrackingTime), 1e-6), 1.0);
      const double scale = memory.Double(kFullScale1 + DistanceOf(channel));
      const double value = scale * memory.Word(kTestInput) / 100 * share;
      velocity = memory.Word(kRangeKind + DistanceOf(channel)) == 0
                     ? value * (IsEnglish() ? 0.3048 : 1)
                     : value / FlowFactor(memory.Word(kFlowUnit + DistanceOf(channel)), IsEnglish()) / area;
    }
    return {velocity, velocity * area};
  }
  const Flow one = FlowOf(0, now), two = FlowOf(1, now);
  const int mode = memory.Word(kPathMode);
  if (mode == 0) return one;
  if (mode == 1) return {(one.velocity + two.velocity) / 2, (one.volume + two.volume) / 2};
  const double volumes[] = {(one.volume + two.volume) / 2, one.volume + two.volume, one.volume - two.volume,
                            two.volume - one.volume};
  return {0, volumes[std::clamp<int>(memory.Word(kCalculation), 0, 3)]};
}

double Meter::FlowPercent(int channel, const Flow& flow) const {
  const Memory& memory = holding_.memory;
  const std::uint32_t distance = DistanceOf(channel);
  const double value = memory.Word(kRangeKind + distance) == 0
                           ? flow.velocity * (IsEnglish() ? kFeetPerMetre : 1)
                           : flow.volume * FlowFactor(memory.Word(kFlowUnit + distance), IsEnglish());
  return Percent(value, memory.Double(kFullScale1 + distance));
}

// What an analog output carries while it is checked, in %; nothing when no output carries `source`.
std::optional<double> Meter::CheckedOutput(int source) const {
  const Memory& memory = holding_.memory;
  const bool carried =
      IsSingle() ? source == 0 : memory.Word(kAoSource1) == source || memory.Word(kAoSource2) == source;
  return ao_checked_ && carried ? std::optional<double>(memory.Word(kAoCheck)) : std::nullopt;
}

// Of the two sensors, calibrated; at a moment, or their means over time.
Meter::Temperatures Meter::MeasuredTemperatures(std::optional<Micros> now) const {
  const Memory& memory = holding_.memory;
  const double kelvin = TemperatureDifference(1, memory.Word(kTemperatureUnit));
  const auto calibrated = [&](double celsius, std::uint32_t zero, std::uint32_t span) {
    return celsius * memory.Double(span) / 100 + memory.Double(zero) / kelvin;
  };
  Temperatures raw{kSupplyMean, kReturnMean};
  if (now) {
    raw = {Swing(kSupplyMean, kSupplySwing, kSupplyPeriod, *now),
           Swing(kReturnMean, kReturnSwing, kReturnPeriod, *now)};
  }
  return {calibrated(raw.supply, kSupplyZero, kSupplySpan), calibrated(raw.back, kReturnZero, kReturnSpan)};
}

// The same, or what is set in their place.
Meter::Temperatures Meter::TemperaturesAt(std::optional<Micros> now) const {
  const Memory& memory = holding_.memory;
  const int unit = memory.Word(kTemperatureUnit);
  Temperatures result = MeasuredTemperatures(now);
  if (memory.Word(kSupplySource) == 1) result.supply = Celsius(memory.Double(kSetSupply), unit);
  if (memory.Word(kReturnSource) == 1) result.back = Celsius(memory.Double(kSetReturn), unit);
  return result;
}

bool Meter::CountsCooling() const {
  const Memory& memory = holding_.memory;
  const int operation = memory.Word(kHeatOperation);
  if (operation != 2) return operation == 0;
  const double change = Celsius(memory.Double(kSwitchTemperature), memory.Word(kTemperatureUnit));
  return TemperaturesAt(std::nullopt).supply < change;
}

// Volumes that went through since the totals were settled, whether they count or not.
Meter::Totals Meter::Counted(int channel, Micros now) const {
  if (channel < 2) {
    const Course& course = courses_[channel];
    const double area = CourseArea(channel);
    return {.plus = area * (course.Forward(now) - course.Forward(totals_since_)),
            .minus = area * (course.Backward(now) - course.Backward(totals_since_))};
  }
  const Totals one = Counted(0, now), two = Counted(1, now);
  const int mode = holding_.memory.Word(kPathMode);
  const int calculation = holding_.memory.Word(kCalculation);
  if (mode == 0) return one;
  if (mode == 1 || calculation == 0)
    return {.plus = (one.plus + two.plus) / 2, .minus = (one.minus + two.minus) / 2};
  if (calculation == 1) return {.plus = one.plus + two.plus, .minus = one.minus + two.minus};
  const double net = one.plus - one.minus - two.plus + two.minus;
  const double volume = calculation == 2 ? net : -net;
  return {.plus = std::max(volume, 0.0), .minus = std::max(-volume, 0.0)};
}

Meter::Totals Meter::TotalsOf(int channel, Micros now) const {
  const Memory& memory = holding_.memory;
  Totals totals = totals_[channel];
  if (memory.Word(kTotalMode + DistanceOf(channel)) != 0) return totals;
  const Totals counted = Counted(channel, now);
  totals.plus += counted.plus;
  totals.minus += counted.minus;
  if (IsSingle() || memory.Word(kHeatMode) == 0) return totals;
  // Heat counts with the mean temperatures, so that it is known at every moment without stepping there.
  const Temperatures mean = TemperaturesAt(std::nullopt);
  const double coefficient = memory.Double(CountsCooling() ? kCoolingCoefficient : kHeatingCoefficient);
  const double heat = (counted.plus - counted.minus) * coefficient * std::abs(mean.supply - mean.back);
  (CountsCooling() ? totals.cooling : totals.heating) += heat;
  return totals;
}

void Meter::SettleTotals(Micros now) {
  std::array<Totals, kChannels> settled = totals_;
  for (int channel = 0; channel < (IsSingle() ? 1 : kChannels); ++channel) {
    settled[channel] = TotalsOf(channel, now);
  }
  totals_ = settled;
  totals_since_ = now;
}

void Meter::MapInput() {
  input_ = Memory();
  input_.Map(0, kType + 8);
  input_.Map(kSamples, kSampleSize);
  if (!IsSingle()) {
    input_.Map(kMeasured[1], kSpacing + 6);
    input_.Map(kMeasured[2], kMeasuredSize);
    for (std::uint32_t block : kHeat) input_.Map(block, kHeatSize);
    input_.Map(kSupplyInput, 8);
    input_.Map(kReturnInput, 8);
  }
  const auto put = [&](std::uint32_t address, std::string_view text) {
    input_.Write(address, Bytes(text.begin(), text.end()));
  };
  put(kVersion, "VLT-SIM  01.00");
  put(kType, IsSingle() ? "SINGLE  " : "TWO-CH  ");
}

void Meter::RefreshInput(Micros now) {
  for (int channel = 0; channel < (IsSingle() ? 1 : kChannels); ++channel) {
    PutMeasured(channel, now);
    if (!IsSingle()) PutHeat(channel, now);
    if (channel < 2) PutCondition(channel, now);
  }
  for (const auto& [address, data] : pinned_input_) input_.Write(address, data);
}

void Meter::PutMeasured(int channel, Micros now) {
  const Memory& memory = holding_.memory;
  const std::uint32_t distance = DistanceOf(channel), block = kMeasured[channel];
  const Flow flow = FlowOf(channel, now);
  const Totals totals = TotalsOf(channel, now);
  const double volume = VolumeFactor(memory.Word(kTotalUnit + distance), IsEnglish());
  const double rate = memory.Double(kTotalRate + distance);
  const auto real = [&](std::uint32_t at, Quantity quantity, double value) {
    input_.PutFloat(block + at, static_cast<float>(Pinned(channel, quantity, value)));
  };
  const auto total = [&](std::uint32_t at, Quantity quantity, double value) {
    input_.PutDouble(block + at, Pinned(channel, quantity, value));
  };
  // The check sends its pulses out of CH1's counter, whatever flows.
  const double checked =
      pulses_since_ && channel == 0
          ? std::floor(static_cast<double>(now - *pulses_since_) / 1e6) * memory.Word(kPulseCheck)
          : 0;
  const auto pulses = [&](std::uint32_t at, Quantity quantity, double value, double more) {
    input_.PutLong(block + at, Count(Pinned(channel, quantity, (rate == 0 ? 0 : value / rate) + more)));
  };
  real(0, Quantity::Velocity, flow.velocity * (IsEnglish() ? kFeetPerMetre : 1));
  real(4, Quantity::Flow, flow.volume * FlowFactor(memory.Word(kFlowUnit + distance), IsEnglish()));
  real(8, Quantity::FlowPercent, CheckedOutput(channel).value_or(FlowPercent(channel, flow)));
  total(12, Quantity::PlusTotal, totals.plus * volume);
  total(20, Quantity::MinusTotal, totals.minus * volume);
  pulses(28, Quantity::PlusPulses, totals.plus * volume, checked);
  pulses(32, Quantity::MinusPulses, totals.minus * volume, 0);
  const double ras = Pinned(channel, Quantity::Ras, ScheduledRas(schedules_[channel], now));
  input_.PutWord(block + 36, static_cast<int>(Count(ras)));
}

void Meter::PutHeat(int channel, Micros now) {
  const Memory& memory = holding_.memory;
  const std::uint32_t block = kHeat[channel];
  const int unit = memory.Word(kTemperatureUnit);
  const bool used = memory.Word(kHeatMode) == 1;
  const Temperatures at = TemperaturesAt(now);
  const Totals totals = TotalsOf(channel, now);
  const double coefficient = memory.Double(CountsCooling() ? kCoolingCoefficient : kHeatingCoefficient);
  const double megajoules_an_hour =
      used ? FlowOf(channel, now).volume * 3600 * coefficient * std::abs(at.supply - at.back) : 0;
  const double thermal = megajoules_an_hour * HeatFactor(memory.Word(kHeatFlowUnit));
  const double factor = HeatFactor(memory.Word(kHeatUnit)), rate = memory.Double(kHeatRate);
  const auto real = [&](std::uint32_t offset, Quantity quantity, double value) {
    input_.PutFloat(block + offset, static_cast<float>(Pinned(channel, quantity, value)));
  };
  const auto wide = [&](std::uint32_t offset, Quantity quantity, double value) {
    input_.PutDouble(block + offset, Pinned(channel, quantity, value));
  };
  const auto pulses = [&](std::uint32_t offset, Quantity quantity, double value) {
    input_.PutLong(block + offset, Count(Pinned(channel, quantity, rate == 0 ? 0 : value / rate)));
  };
  real(0, Quantity::ThermalFlow, thermal);
  real(4, Quantity::ThermalPercent,
       CheckedOutput(3 + channel).value_or(Percent(thermal, memory.Double(kHeatFullScale1))));
  wide(8, Quantity::HeatingTotal, totals.heating * factor);
  wide(16, Quantity::CoolingTotal, totals.cooling * factor);
  pulses(24, Quantity::HeatingPulses, totals.heating * factor);
  pulses(28, Quantity::CoolingPulses, totals.cooling * factor);
  wide(32, Quantity::SupplyTemp, Temperature(at.supply, unit));
  wide(40, Quantity::ReturnTemp, Temperature(at.back, unit));
  wide(48, Quantity::TempDifference, TemperatureDifference(at.supply - at.back, unit));
  const Temperatures measured = MeasuredTemperatures(now);
  input_.PutDouble(kSupplyInput, Temperature(measured.supply, unit));
  input_.PutDouble(kReturnInput, Temperature(measured.back, unit));
}

// Its strength follows from the peak that the meter regulates to; an alarm of the signal leaves little of it.
Signal Meter::SignalOf(int channel, Micros now) const {
  constexpr int kSignalAlarms = 0x2C00;  // collection error, no signal, signal error
  constexpr double kCounts = 1000;       // for each step of the peak's code
  const std::uint32_t details = kDetails[channel];
  const double ras = Pinned(channel, Quantity::Ras, ScheduledRas(schedules_[channel], now));
  const double left = (Count(ras) & kSignalAlarms) != 0 ? 0.02 : 1;
  const double peak = kCounts * (holding_.memory.Word(details + kSignalPeak) + 1) * left;
  const double wobble = Swing(0, 0.007, 17, now);
  const SoundPath path = PathOf(channel);
  return {.up = peak * (1 + wobble),
          .down = peak * 0.967 * (1 - wobble),
          .filtered_up = 63'333 * peak / kCounts * (1 + wobble),
          .filtered_down = 61'333 * peak / kCounts * (1 - wobble),
          .difference = path.Difference(FlowOf(channel, now).velocity)};
}

void Meter::PutCondition(int channel, Micros now) {
  const SoundPath path = PathOf(channel);
  const Flow flow = FlowOf(channel, now);
  const double speed = IsEnglish() ? kFeetPerMetre : 1;
  const double difference = path.Difference(flow.velocity);
  const double reynolds =
      path.viscosity > 0 ? std::abs(flow.velocity) * path.fluid.thickness / path.viscosity : 0;
  const double profile = reynolds < 2300 ? 4.0 / 3 : 1.119 - 0.011 * std::log10(reynolds);
  std::uint32_t at = kMeasured[channel] + kCondition;
  const auto word = [&](double value, double scale = 1) {
    input_.PutWord(at, static_cast<int>(Scaled(value, scale)));
    at += 2;
  };
  const auto wide = [&](double value, double scale) {
    input_.PutLong(at, Scaled(value, scale));
    at += 4;
  };
  for (const Layer* layer : {&path.wedge, &path.pipe, &path.lining, &path.fluid}) {
    word(layer->velocity * speed);
    word(Degrees(layer->angle), 10);
  }
  word(path.time, 1e6);
  const Memory& memory = holding_.memory;
  const std::uint32_t details = kDetails[channel];
  const bool own_window = memory.Word(details + kWindowControl) != 0;
  word(own_window ? memory.Word(details + kOpenTime) : path.time * 1e6 - 20);  // 20 us early by itself
  wide((path.time - difference / 2) * 1e6, 1000);
  wide((path.time + difference / 2) * 1e6, 1000);
  wide(path.time * 1e6, 1000);
  wide(difference * 1e9, 10000);
  wide(path.delay * 1e6, 1000);
  wide(Degrees(path.fluid.angle), 1000);
  wide(path.fluid.velocity * speed, 10);
  wide(reynolds, 1);
  wide(profile, 10000);
  wide(flow.velocity * speed, 1000);
  const double wobble = Swing(0, 0.5, 17, now);
  const bool own_gain = memory.Word(details + kGainControl) != 0;
  word(own_gain ? memory.Word(details + kGainUp) / 100.0 : 55 + wobble, 100);  // signal power, %
  word(own_gain ? memory.Word(details + kGainDown) / 100.0 : 54 + wobble, 100);
  // From here on it is the head of a captured wave too: peaks, trigger levels in %, peaks of the filtered
  // waves.
  const Signal signal = SignalOf(channel, now);
  word(signal.up);
  word(signal.down);
  word(memory.Word(details + kTriggerLevel), 100);
  word(memory.Word(details + kTriggerLevel), 100);
  wide(signal.filtered_up, 1);
  wide(signal.filtered_down, 1);
  // The spacing counts 0.01 mm or 0.001 inch; the second number is the mark on the mounting rail, 1 mm apart.
  wide(path.spacing, IsEnglish() ? 1000 / 0.0254 : 1e5);
  word(std::max(path.spacing * 1000, 0.0));
}

}  // namespace sim
