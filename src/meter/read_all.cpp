// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/read_all.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "meter/details_table.h"
#include "meter/display_table.h"
#include "meter/facts.h"
#include "meter/heat_table.h"
#include "meter/maintenance_table.h"
#include "meter/process_table.h"
#include "meter/range_table.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kFourthOutput = 3;
// Where process setting and sensor spacing of CH2 answer a second time: the read-out takes them from here.
constexpr int kSecondProcess = 0x14D0;
constexpr int kSecondSpacing = 0x1480;

}  // namespace

const SettingsReader::Step SettingsReader::kSteps[] = {
    {&SettingsReader::ReadAllSystem, 650, Location::kMeter},
    {&SettingsReader::ReadAllProcess, 1640, Location::kPipe},
    {&SettingsReader::ReadAllHeat, 553, Location::kMeter},
    {&SettingsReader::ReadAllRange, 1170, Location::kChannel},
    {&SettingsReader::ReadAllTotal, 1610, Location::kChannel},
    {&SettingsReader::ReadAllStatus, 720, Location::kOutput},
    {&SettingsReader::ReadAllDetails, 2000, Location::kPath},
    {&SettingsReader::ReadAllDisplay, 2120, Location::kMeter},
    {&SettingsReader::ReadAllMaintenance, 1070, Location::kMeter, ReadScope::kWhole},
};

SettingsReader::SettingsReader(App& app, Listener listener, ReadScope scope)
    : app_(app), listener_(std::move(listener)), scope_(scope) {
  settings_.facts = app.state;
}

// The report asks every full model; it is of no use where the meter has no heat calculation.
bool SettingsReader::HasThermal() const {
  return IsWhole() ? MayHaveHeat(settings_.facts) : !NoHeatFunction();
}

bool SettingsReader::IsSingle() const { return IsSingleChannel(settings_.facts); }

bool SettingsReader::ReadAll() {
  for (const Step& step : kSteps) {
    Run(step);
    if (stopped_) return false;
  }
  return true;
}

int SettingsReader::PlacesOf(const Step& step) const {
  if (step.read == &SettingsReader::ReadAllHeat && NoHeatFunction()) return 0;
  if (step.from > scope_) return 0;
  return LocationCount(step.location, settings_.facts);
}

void SettingsReader::Run(const Step& step) {
  bool failed = false;
  for (int index = 0; index < PlacesOf(step); ++index) {
    Announce(step, index);
    if (!(this->*step.read)(index)) failed = true;
    if (stopped_) return;
  }
  if (failed) listener_.failed();
}

void SettingsReader::Announce(const Step& step, int index) {
  const int count = std::accumulate(std::begin(kSteps), std::end(kSteps), 0,
                                    [this](int sum, const Step& each) { return sum + PlacesOf(each); });
  const std::string place = PlaceName(step.location, index);
  part_ = app_.Text(step.title) + (place.empty() ? "" : " ") + place;
  listener_.began(++number_, count, part_);
}

bool SettingsReader::Read(const Block& block, int index) {
  return ReadFrom(SpanOf(block, index).address, block, index);
}

bool SettingsReader::ReadFrom(int at, const Block& block, int index) {
  if (stopped_ || listener_.stop()) {
    stopped_ = true;
    return false;
  }
  RegisterSpan span = SpanOf(block, index);
  bool came = false;
  if (WasAsked(span, came)) return came;
  asked_.push_back(span);
  const int address = std::exchange(span.address, at);
  RegisterData data;
  const ExchangeReport exchange =
      IsWhole() ? ReadRegistersProven(app_, span, data) : ReadRegisters(app_, span, data);
  if (!exchange) {
    span.address = address;
    settings_.unread.push_back({span, exchange.text, part_});
    return false;
  }
  settings_.registers.Put(span.function, address, std::move(data));
  LearnAll(settings_.facts, [this](const ParameterPlace& place) -> std::optional<int> {
    const auto bytes = settings_.registers.Of(*place.row, place.index);
    if (bytes.empty()) return {};
    return CodeAt(*place.row, bytes, 0);
  });
  return true;
}

bool SettingsReader::WasAsked(const RegisterSpan& span, bool& came) const {
  if (!IsWhole()) return false;
  const auto is_it = [&](const RegisterSpan& other) {
    return other.function == span.function && other.address == span.address && other.count == span.count;
  };
  came = std::none_of(settings_.unread.begin(), settings_.unread.end(),
                      [&](const UnreadBlock& unread) { return is_it(unread.span); });
  return std::any_of(asked_.begin(), asked_.end(), is_it);
}

// --- the readers: a failed exchange leaves its registers out, the others are read all the same -----------

bool SettingsReader::ReadAllSystem(int) {
  bool good = Read(kFirmwareBlock);
  for (const Block& block : {kDeviceBlock, kSpecificationBlock, kOperationModeBlock}) {
    good = Read(block) && good;
  }
  if (IsSingle()) return good;
  for (const Block& block :
       {kMeasurementModeBlock, kCalculationBlock, kFirstSourceBlock, kSecondSourceBlock}) {
    good = Read(block) && good;
  }
  return good;
}

bool SettingsReader::ReadAllProcess(int channel) {
  const bool second = channel == 1 && !IsWhole();
  const bool settings =
      second ? ReadFrom(kSecondProcess, kProcessBlock, channel) : Read(kProcessBlock, channel);
  const bool spacing =
      second ? ReadFrom(kSecondSpacing, kSpacingBlock, channel) : Read(kSpacingBlock, channel);
  return settings && spacing;
}

bool SettingsReader::ReadAllHeat(int) { return Read(kHeatBlock); }

bool SettingsReader::ReadAllRange(int channel) {
  bool good = Read(channel == kComputedChannel ? kComputedRangeBlock : kRangeBlock, channel);
  if (HasThermal()) good = Read(kThermalRangeBlock) && good;
  return good;
}

bool SettingsReader::ReadAllTotal(int channel) {
  bool good = Read(kTotalBlock, channel);
  if (HasThermal()) good = Read(kThermalTotalBlock) && good;
  return good;
}

bool SettingsReader::ReadAllStatus(int output) {
  bool good = IsSingle() || Read(kOutputChannelBlock);
  const bool two = LocationCount(Location::kOutput, settings_.facts) <= 2;
  good = Read(output == kFourthOutput ? kFourthOutputBlock : two ? kTwoOutputsBlock : kOutputBlock) && good;
  return NoHeatFunction() ? good : Read(kThermalOutputBlock) && good;
}

bool SettingsReader::ReadAllDetails(int channel) { return Read(kDetailsBlock, channel); }

bool SettingsReader::ReadAllDisplay(int) {
  const bool good = Read(kDisplayBlock);
  return IsSingle() ? good : Read(kDisplayChannelBlock) && good;
}

bool SettingsReader::ReadAllMaintenance(int) {
  bool good = Read(kAo1AdjustmentBlock);
  good = Read(kTestBlock) && good;
  if (IsSingle()) return good;
  good = Read(kAo2AdjustmentBlock) && good;
  return Read(kFrequencyCheckBlock) && good;
}

}  // namespace vlt
