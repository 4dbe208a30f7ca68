// SPDX-License-Identifier: GPL-3.0-or-later
// What scenarios do to a meter past its own rules.
#include <algorithm>

#include "sim/addresses.h"
#include "sim/meter.h"
#include "sim/units.h"

namespace sim {

namespace {

using namespace address;

// A number that suits a register and that no other register gets, as far as its range goes.
double Distinct(const Limit& limit, int index, unsigned seed) {
  constexpr int kLists = 100;  // a shorter range is a list of codes
  const double span = limit.high - limit.low;
  if (limit.width == Width::Word && span < kLists) {
    const auto choices = static_cast<unsigned>(span) + 1;
    return limit.low + static_cast<double>((static_cast<unsigned>(index) * 7 + seed) % choices);
  }
  const int step = static_cast<int>(seed % 16);
  if (limit.width == Width::Long) return 10'000 + 111 * index + 40'000 * step;
  const bool negative = limit.low < 0 && index % 5 == 0;
  const double value = limit.width == Width::Word ? 1000 + index + 500 * step : 100.125 + index + 500 * step;
  return negative ? -value : value;
}

constexpr std::uint32_t kKeptByFill[] = {kUnitSystem, kSpecification, kPathMode, kStore,
                                         kMemoryInit, kCapture,       kZero,     kZero + kChannel2};

bool IsKeptByFill(std::uint32_t address) {
  const bool test = address >= kAoCheck && address <= kTestState;
  return test || address == kFrequencyCheck ||
         std::ranges::find(kKeptByFill, address) != std::end(kKeptByFill);
}

}  // namespace

void Meter::Fill(unsigned seed, Micros now) {
  SettleTotals(now);
  Memory& memory = holding_.memory;
  int index = 0;
  for (const auto& [address, limit] : holding_.limits) {
    ++index;
    if (IsKeptByFill(address)) continue;
    const double value = Distinct(limit, index, seed);
    if (limit.width == Width::Word) memory.PutWord(address, static_cast<int>(value));
    if (limit.width == Width::Long) memory.PutLong(address, static_cast<std::int64_t>(value));
    if (limit.width == Width::Double) memory.PutDouble(address, value);
  }
}

void Meter::ChangeUnits(int flow, int temperature, int heat) {
  Memory& memory = holding_.memory;
  const auto scale = [&](std::uint32_t at, double factor) {
    memory.PutDouble(at, memory.Double(at) * factor);
  };
  for (int channel = 0; channel < (IsSingle() ? 1 : kChannels); ++channel) {
    const std::uint32_t distance = DistanceOf(channel);
    const int before = memory.Word(kFlowUnit + distance);
    const double factor = FlowFactor(flow, IsEnglish()) / FlowFactor(before, IsEnglish());
    memory.PutWord(kFlowUnit + distance, flow);
    for (std::uint32_t at : {kFullScale1, kFullScale2}) scale(at + distance, factor);
  }
  if (IsSingle()) return;
  const double factor = HeatFactor(heat) / HeatFactor(memory.Word(kHeatFlowUnit));
  for (std::uint32_t at : {kHeatFullScale1, kHeatFullScale2}) scale(at, factor);
  scale(kHeatRate, HeatFactor(heat) / HeatFactor(memory.Word(kHeatUnit)));
  for (std::uint32_t at : {kSwitchTemperature, kSetSupply, kSetReturn}) {
    const double celsius = Celsius(memory.Double(at), memory.Word(kTemperatureUnit));
    memory.PutDouble(at, Temperature(celsius, temperature));
  }
  memory.PutWord(kTemperatureUnit, temperature);
  memory.PutWord(kHeatFlowUnit, heat);
  memory.PutWord(kHeatUnit, heat);
}

bool Meter::PinInput(std::uint32_t address, const Bytes& data) {
  if (!input_.Has(address, std::max<std::uint32_t>(static_cast<std::uint32_t>(data.size()), 2))) return false;
  if (data.empty()) pinned_input_.erase(address);
  if (!data.empty()) pinned_input_[address] = data;
  return true;
}

void Meter::BreakMemory(Space space, std::uint32_t from, std::uint32_t to, int code) {
  broken_.push_back({space, from, to, code});
}

}  // namespace sim
