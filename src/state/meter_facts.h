// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a meter: one small value, which a page, a snapshot or a side of a comparison holds for
// itself. What a page shows and what is sent rest on it, so of the meter in use whatever can change a fact
// makes it unknown, and an unknown one is asked before anything that rests on it goes to the meter.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "resources/string_table.h"

namespace vlt {

inline constexpr int kChannels = 3;  // CH1, CH2 and the computed CH3

// Where a meter is reached: port n of COMn, and station, 0 for the only meter on a line.
struct MeterPlace {
  int port = 0;
  int station = 0;
  friend bool operator<(const MeterPlace& a, const MeterPlace& b) {
    return a.port != b.port ? a.port < b.port : a.station < b.station;
  }
  bool operator==(const MeterPlace&) const = default;
};

// One fact, by channel where each has its own.
enum class Fact : std::uint8_t {
  kUnitSystem,     // UnitFlag
  kSpecification,  // SpecNumber
  kPathMode,
  kOperationMode,
  kHeatMode,
  kHeatFlowUnit,
  kHeatTotalUnit,
  kTempUnit,
  kRangeKind,  // from here on one a channel
  kRangeUnit,
  kTotalUnit,
};
inline constexpr int kFactKinds = 11;

struct FactPlace {
  Fact fact = Fact::kUnitSystem;
  int channel = 0;
  bool operator==(const FactPlace&) const = default;
  bool operator<(const FactPlace& other) const {
    return fact != other.fact ? fact < other.fact : channel < other.channel;
  }
};

// Which registers were written, in the order of writes and learning: what was learnt before a write of its
// register is not known any more. Addresses are those of the meter's map.
class WriteMarks {
 public:
  // Registers are about to be written; whether the meter takes it is not known before it is read.
  void Note(int address, int registers);
  // The next moment of this order.
  std::int64_t Tick() { return ++now_; }
  // When a register was written last; 0: never.
  std::int64_t Last(int address) const;

 private:
  std::int64_t now_ = 0;
  std::map<int, std::int64_t> written_;
};

struct MeterFacts {
  // Under the names of the product. The settings file keeps the units of the last session.
  int UnitFlag = 0;       // 0 metric, 1 English; any other number is a unit system that nobody knows
  int SpecClass = 0;      // number of its model (state/meter_models.h), -1 no answer
  int SpecNumber = -1;    // specification number that SpecClass was told by, -1 without one
  int PathMode = 0;       // 0 one path, 1 two paths, 2 two pipes
  int OperationMode = 0;  // register 003EH
  int HeatMode = 0;
  std::array<int, kChannels> RangeKind{};
  std::array<int, kChannels> RangeUnit{};
  std::array<int, kChannels> TotalUnit{};
  int HeatFlowUnit = 0;
  int HeatTotalUnit = 0;
  int TempUnit = 0;  // TemperatureUnit on the energy tab

  // The variable of a fact. SpecClass follows SpecNumber only where it was asked for (meter/facts.h).
  void Learn(FactPlace fact, int value);
  int ValueOf(FactPlace fact) const;
};

// The same, and the words that values of this meter are told in.
struct ToldFacts : MeterFacts {
  int LangOffset = 0;  // 0 Japanese, 5000 English; added to every text id
  Language Spoken() const { return LanguageOf(LangOffset); }
  std::string ModelCode;  // hardware variant of the installation: "M627", "T305" or "K410"
};

// How fresh the facts of the meter in use are: when each was learnt from the meter of `place`, by the
// platform's clock and in the order of writes. Nothing when it was not, or not since what makes it unknown.
struct LearntFacts {
  struct Moment {
    std::int64_t at_ms = 0;
    std::int64_t order = 0;
  };
  MeterPlace place;
  WriteMarks writes;

  // The meter of `from` has told a fact. Of another meter than before nothing else is known.
  void Note(FactPlace fact, std::int64_t now_ms, const MeterPlace& from);
  const std::optional<Moment>& When(FactPlace fact) const { return moments_.at(At(fact)); }
  void Forget(FactPlace fact) { moments_.at(At(fact)).reset(); }
  // Another meter may stand behind the line.
  void ForgetAll() { moments_.fill({}); }

 private:
  static std::size_t At(FactPlace fact) {
    return static_cast<std::size_t>(fact.fact) * kChannels + static_cast<std::size_t>(fact.channel);
  }
  std::array<std::optional<Moment>, static_cast<std::size_t>(kFactKinds) * kChannels> moments_{};
};

}  // namespace vlt
