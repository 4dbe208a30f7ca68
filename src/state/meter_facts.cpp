// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/meter_facts.h"

namespace vlt {
namespace {

constexpr int kRegisterBytes = 2;

// Where a fact is kept; the specification number, of which two things are, apart.
struct Keeper {
  int MeterFacts::*common = nullptr;
  std::array<int, kChannels> MeterFacts::*channel = nullptr;
};
constexpr Keeper kKeepers[kFactKinds] = {
    {&MeterFacts::UnitFlag},           {&MeterFacts::SpecNumber},         {&MeterFacts::PathMode},
    {&MeterFacts::OperationMode},      {&MeterFacts::HeatMode},           {&MeterFacts::HeatFlowUnit},
    {&MeterFacts::HeatTotalUnit},      {&MeterFacts::TempUnit},           {nullptr, &MeterFacts::RangeKind},
    {nullptr, &MeterFacts::RangeUnit}, {nullptr, &MeterFacts::TotalUnit},
};

const Keeper& KeeperOf(Fact fact) { return kKeepers[static_cast<std::size_t>(fact)]; }

}  // namespace

void WriteMarks::Note(int address, int registers) {
  const std::int64_t moment = Tick();
  for (int i = 0; i < registers; ++i) written_[address + kRegisterBytes * i] = moment;
}

std::int64_t WriteMarks::Last(int address) const {
  const auto found = written_.find(address);
  return found == written_.end() ? 0 : found->second;
}

void MeterFacts::Learn(FactPlace fact, int value) {
  const Keeper& keeper = KeeperOf(fact.fact);
  if (keeper.common != nullptr) {
    this->*keeper.common = value;
  } else {
    (this->*keeper.channel).at(static_cast<std::size_t>(fact.channel)) = value;
  }
}

int MeterFacts::ValueOf(FactPlace fact) const {
  const Keeper& keeper = KeeperOf(fact.fact);
  return keeper.common != nullptr ? this->*keeper.common
                                  : (this->*keeper.channel).at(static_cast<std::size_t>(fact.channel));
}

void LearntFacts::Note(FactPlace fact, std::int64_t now_ms, const MeterPlace& from) {
  if (!(place == from)) ForgetAll();
  place = from;
  moments_.at(At(fact)) = Moment{.at_ms = now_ms, .order = writes.Tick()};
}

}  // namespace vlt
