// SPDX-License-Identifier: GPL-3.0-or-later
// Requests and commands. What moves is in meter_live.cpp, what scenarios do to a meter in meter_scenario.cpp.
#include "sim/meter.h"

#include <bit>

#include "sim/addresses.h"
#include "sim/units.h"

namespace sim {

namespace {

constexpr int kBadFunction = 1, kBadAddress = 2, kBadValue = 3;
constexpr std::uint32_t kMostRead = 125, kMostWritten = 123;  // words that fit into one frame
constexpr int kCaptureAccepted = 10, kCaptureReady = 20;

using namespace address;

Bytes Exception(int function, int code) {
  return {static_cast<std::uint8_t>(function | 0x80), static_cast<std::uint8_t>(code)};
}

std::uint32_t Field(std::span<const std::uint8_t> request, std::size_t at) {
  return static_cast<std::uint32_t>(ReadBig(request.subspan(at, 2)));
}

double Decode(const Limit& limit, std::span<const std::uint8_t> data) {
  if (limit.width == Width::Word) return static_cast<std::int16_t>(ReadBig(data));
  if (limit.width == Width::Long) return static_cast<std::int32_t>(ReadBig(data));
  return std::bit_cast<double>(ReadBig(data));
}

std::uint32_t SizeOf(const Limit& limit) {
  return limit.width == Width::Word ? 2 : limit.width == Width::Long ? 4 : 8;
}

}  // namespace

struct Meter::Command {
  std::uint32_t address;
  void (Meter::*run)(Micros now, const Quirks& quirks);
};

Meter::Meter(const MeterConfig& config) : config_(config), totals_since_(config.started) {
  courses_.assign(2, Course(Motion{.wave = Wave::Still}));
  Initialise();
}

Bytes Meter::Serve(std::span<const std::uint8_t> request, Micros now, const Quirks& quirks) {
  Advance(now);
  if (now < silent_until_ || request.empty()) return {};
  const int function = request[0];
  if (function != 3 && function != 4 && function != 6 && function != 16) {
    return Exception(function, kBadFunction);
  }
  if (request.size() < 5) return Exception(function, kBadValue);
  if (const BrokenRange* broken = BrokenAt(request)) {
    return broken->code == 0 ? Bytes{} : Exception(function, broken->code);
  }
  if (function == 6) return WriteOne(request, now, quirks);
  return function == 16 ? WriteMany(request, now, quirks) : ReadWords(request, now);
}

const Meter::BrokenRange* Meter::BrokenAt(std::span<const std::uint8_t> request) const {
  const Space space = request[0] == 4 ? Space::Input : Space::Holding;
  const std::uint32_t asked = Field(request, 1), size = request[0] == 6 ? 2 : 2 * Field(request, 3);
  const std::uint32_t first = space == Space::Input ? ResolveInput(asked) : ResolveHolding(asked);
  for (const BrokenRange& range : broken_) {
    if (range.space == space && first <= range.to && first + size > range.from) return &range;
  }
  return nullptr;
}

int Meter::CheckRange(const Memory& memory, std::uint32_t address, std::uint32_t size) const {
  return address % 2 == 0 && memory.Has(address, size) ? 0 : kBadAddress;
}

Bytes Meter::ReadWords(std::span<const std::uint8_t> request, Micros now) {
  const int function = request[0];
  const std::uint32_t words = Field(request, 3);
  if (request.size() != 5 || words == 0 || words > kMostRead) return Exception(function, kBadValue);
  if (function == 4) RefreshInput(now);
  const Memory& memory = function == 4 ? input_ : holding_.memory;
  const std::uint32_t asked = Field(request, 1);
  const std::uint32_t address = function == 4 ? ResolveInput(asked) : ResolveHolding(asked);
  if (int code = CheckRange(memory, address, 2 * words)) return Exception(function, code);

  Bytes reply{static_cast<std::uint8_t>(function), static_cast<std::uint8_t>(2 * words)};
  const Bytes data = memory.Read(address, 2 * words);
  reply.insert(reply.end(), data.begin(), data.end());
  return reply;
}

Bytes Meter::WriteOne(std::span<const std::uint8_t> request, Micros now, const Quirks& quirks) {
  if (request.size() != 5) return Exception(request[0], kBadValue);
  const std::uint32_t address = ResolveHolding(Field(request, 1));
  if (int code = Write(address, request.subspan(3), now, quirks)) return Exception(request[0], code);

  Bytes reply(request.begin(), request.end());
  // The capture command is answered with its outcome where every other register is echoed.
  if (address == kCapture && !quirks.ignore_write) {
    reply.resize(3);
    AppendBig(reply, holding_.memory.Unsigned(kCapture), 2);
  }
  return reply;
}

Bytes Meter::WriteMany(std::span<const std::uint8_t> request, Micros now, const Quirks& quirks) {
  const std::uint32_t words = Field(request, 3);
  if (words == 0 || words > kMostWritten || request.size() != 6 + 2 * words || request[5] != 2 * words) {
    return Exception(request[0], kBadValue);
  }
  const std::uint32_t address = ResolveHolding(Field(request, 1));
  if (int code = Write(address, request.subspan(6), now, quirks)) return Exception(request[0], code);
  return Bytes(request.begin(), request.begin() + 5);
}

int Meter::CheckLimits(std::uint32_t address, std::span<const std::uint8_t> data) const {
  const auto end = holding_.limits.lower_bound(address + static_cast<std::uint32_t>(data.size()));
  for (auto it = holding_.limits.lower_bound(address); it != end; ++it) {
    const auto& [at, limit] = *it;
    // Half a value can't be judged; it is taken as it is.
    if (at - address + SizeOf(limit) > data.size()) continue;
    const double value = Decode(limit, data.subspan(at - address, SizeOf(limit)));
    if (!(value >= limit.low && value <= limit.high)) return kBadValue;
  }
  return 0;
}

int Meter::Write(std::uint32_t address, std::span<const std::uint8_t> data, Micros now,
                 const Quirks& quirks) {
  static constexpr Command kCommands[] = {
      {kUnitSystem, &Meter::OnUnitSystem},
      {kZero, &Meter::OnZero<0>},
      {kZero + kChannel2, &Meter::OnZero<1>},
      {kSpecification, &Meter::OnSpecification},
      {kStore, &Meter::OnStore},
      {kMemoryInit, &Meter::OnInitialise},
      {kAoCheck, &Meter::OnAoCheck},
      {kPulseCheck, &Meter::OnPulseCheck},
      {kOutputCheck, &Meter::OnOutputCheck},
      {kTestMode, &Meter::OnTest},
      {kTestInput, &Meter::OnTest},
      {kTrackingTime, &Meter::OnTest},
      {kTestState, &Meter::OnTestEnd},
      {kCapture, &Meter::OnCapture},
      {kFrequencyCheck, &Meter::OnOutputCheck},
      {kTotalMode, &Meter::OnTotalMode<0>},
      {kTotalMode + kChannel2, &Meter::OnTotalMode<1>},
      {kTotalMode + kChannel3, &Meter::OnTotalMode<2>},
  };
  if (int code = CheckRange(holding_.memory, address, static_cast<std::uint32_t>(data.size()))) return code;
  if (int code = CheckLimits(address, data)) return code;
  if (quirks.ignore_write) return 0;

  SettleTotals(now);
  holding_.memory.Write(address, data);
  for (const Command& command : kCommands) {
    if (command.address >= address && command.address < address + data.size()) {
      (this->*command.run)(now, quirks);
    }
  }
  return 0;
}

void Meter::OnUnitSystem(Micros, const Quirks&) {
  const int units = holding_.memory.Word(kUnitSystem);
  if (units == process_units_) return;
  process_units_ = units;
  ConvertProcess(holding_.memory, 0, units == 1);
  if (!IsSingle()) ConvertProcess(holding_.memory, kChannel2, units == 1);
}

template <int channel>
void Meter::OnZero(Micros now, const Quirks&) {
  const std::uint32_t address = kZero + DistanceOf(channel);
  const double shown = courses_[channel].Velocity(now);
  zero_offset_[channel] = holding_.memory.Word(address) == 1 ? zero_offset_[channel] + shown : 0;
  BuildCourse(channel);
  holding_.memory.PutWord(address, 0);
}

void Meter::OnSpecification(Micros now, const Quirks&) {
  config_.specification = holding_.memory.Word(kSpecification);
  Initialise();
  silent_until_ = now + config_.restart_time;
}

void Meter::OnInitialise(Micros now, const Quirks&) {
  Initialise();
  silent_until_ = now + config_.restart_time;
}

void Meter::OnStore(Micros now, const Quirks& quirks) {
  if (storing_ || holding_.memory.Word(kStore) == 0) {
    holding_.memory.PutWord(kStore, storing_ ? 1 : 0);
    return;
  }
  storing_ = holding_.memory;
  store_done_ = now + quirks.store_time.value_or(config_.store_time);
}

void Meter::OnTest(Micros now, const Quirks&) {
  Memory& memory = holding_.memory;
  test_since_ = memory.Word(kTestMode) == 1 ? std::optional(now) : std::nullopt;
  ShowTestState();
}

// The outputs are checked from the first value on until the test ends; 0 % and 0 pulses are values too.
void Meter::OnAoCheck(Micros, const Quirks&) {
  ao_checked_ = true;
  ShowTestState();
}

void Meter::OnPulseCheck(Micros now, const Quirks&) {
  pulses_since_ = now;
  ShowTestState();
}

void Meter::OnOutputCheck(Micros, const Quirks&) {
  output_checked_ = true;
  ShowTestState();
}

void Meter::ShowTestState() {
  const bool busy = test_since_ || ao_checked_ || pulses_since_ || output_checked_;
  holding_.memory.PutWord(kTestState, busy ? 1 : 0);
}

void Meter::OnTestEnd(Micros, const Quirks&) {
  Memory& memory = holding_.memory;
  for (std::uint32_t at = kAoCheck; at <= kTestState; at += 2) memory.PutWord(at, 0);
  if (!IsSingle()) memory.PutWord(kFrequencyCheck, 0);
  test_since_.reset();
  pulses_since_.reset();
  output_checked_ = ao_checked_ = false;
}

void Meter::OnCapture(Micros now, const Quirks& quirks) {
  const int kind = holding_.memory.Word(kCapture);
  capture_ready_.reset();
  if (kind == 0 || quirks.refuse_capture || (kind > 5 && IsSingle())) {
    holding_.memory.PutWord(kCapture, 0);
    return;
  }
  holding_.memory.PutWord(kCapture, kCaptureAccepted);
  if (quirks.stuck_capture) return;
  capture_ready_ = now + quirks.capture_time.value_or(config_.capture_time);
  capture_outcome_ = quirks.fail_capture ? 0 : kCaptureReady;
  const auto samples = CaptureWave(kind, SignalOf(kind > 5 ? 1 : 0, now), config_.seed + captures_++);
  for (int i = 0; i < kWaveSamples; ++i) input_.PutLong(kSamples + 4 * i, samples[i]);
}

template <int channel>
void Meter::OnTotalMode(Micros, const Quirks&) {
  const Memory& memory = holding_.memory;
  const std::uint32_t distance = DistanceOf(channel);
  if (memory.Word(kTotalMode + distance) != 2) return;
  const double factor = VolumeFactor(memory.Word(kTotalUnit + distance), IsEnglish());
  totals_[channel] = {.plus = memory.Double(kPreset + distance) / factor};
  if (IsSingle()) return;
  double& heat = CountsCooling() ? totals_[channel].cooling : totals_[channel].heating;
  heat = memory.Double(kHeatPreset) / HeatFactor(memory.Word(kHeatUnit));
}

void Meter::Advance(Micros now) {
  if (storing_ && now >= store_done_) {
    stored_ = *storing_;
    storing_.reset();
    holding_.memory.PutWord(kStore, 0);
  }
  if (capture_ready_ && now >= *capture_ready_) {
    capture_ready_.reset();
    holding_.memory.PutWord(kCapture, capture_outcome_);
  }
}

void Meter::Initialise() {
  holding_ = FactoryHolding(config_.specification);
  factory_area_ = PathFor(holding_.memory, 0, false).Area();
  Memory& memory = holding_.memory;
  memory.PutWord(kUnitSystem, config_.unit_system);
  memory.PutWord(kLanguage, config_.language);
  memory.PutWord(kIdNumber, config_.id_number);
  if (!IsSingle()) memory.PutWord(kPathMode, config_.path_mode);
  process_units_ = 0;
  OnUnitSystem(0, {});
  if (IsEnglish()) UseEnglishFactory();
  storing_.reset();
  zero_offset_ = {};
  for (int channel = 0; channel < 2; ++channel) BuildCourse(channel);
  ClearCommands();
  stored_ = memory;
  MapInput();
}

// gal/min and gal, and full scales and pulses that suit them: what an English meter is delivered with.
void Meter::UseEnglishFactory() {
  Memory& memory = holding_.memory;
  for (int channel = 0; channel < (IsSingle() ? 1 : kChannels); ++channel) {
    const std::uint32_t distance = DistanceOf(channel);
    memory.PutWord(kFlowUnit + distance, 1);
    memory.PutWord(kTotalUnit + distance, 0);
    memory.PutDouble(kFullScale1 + distance, 66);
    memory.PutDouble(kFullScale2 + distance, 66);
    memory.PutDouble(kTotalRate + distance, 1);
  }
}

std::uint32_t Meter::DistanceOf(int channel) {
  static constexpr std::uint32_t kDistances[] = {0, kChannel2, kChannel3};
  return kDistances[channel];
}

void Meter::ClearCommands() {
  Memory& memory = holding_.memory;
  OnTestEnd(0, {});
  for (std::uint32_t at : {kZero, kStore, kMemoryInit, kCapture}) memory.PutWord(at, 0);
  if (!IsSingle()) memory.PutWord(kZero + kChannel2, 0);
  capture_ready_.reset();
}

void Meter::Restart(Micros now) {
  Advance(now);
  SettleTotals(now);
  holding_.memory = stored_;
  process_units_ = holding_.memory.Word(kUnitSystem);
  storing_.reset();
  ClearCommands();
  silent_until_ = now + config_.restart_time;
}

}  // namespace sim
