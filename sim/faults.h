// SPDX-License-Identifier: GPL-3.0-or-later
// Faults of a line and of a meter, armed by name for chosen requests.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sim/bytes.h"

namespace sim {

// Those of an answer strike a boot loader's answers too; the last five happen in the boot loader alone.
enum class Fault {
  Silence,
  Late,
  OneByte,
  Short,
  Crc,
  Function,
  Exception,
  Station,
  Noise,
  Extra,
  Trickle,
  Unplug,
  SlowStore,
  RefuseCapture,
  StuckCapture,
  IgnoreWrite,
  WrongEcho,
  SlowCapture,
  FailCapture,
  LoaderError,
  LoaderLongError,
  LoaderNoLineEnd,
  LoaderSpoil,
  LoaderNoFlash,
};

struct FaultInfo {
  Fault fault;
  std::string_view name;
  std::string_view value;  // what the number behind "=" means; empty when it takes none
  int preset;              // the number when none is given
  std::string_view does;
  std::string_view must;       // what the program at the other end must do
  bool of_any_answer = false;  // strikes the bytes of an answer whatever they mean
};

// All faults, in the order of the enumeration.
std::span<const FaultInfo> Faults();
const FaultInfo& InfoOf(Fault fault);

// A fault waiting for its requests. An empty condition fits every request. For a boot loader's frame the
// function is its command letter (41H open, 42H data, 43H close), the address its code byte, the station 0.
struct ArmedFault {
  Fault fault = Fault::Silence;
  int value = 0;
  std::optional<std::uint16_t> address;  // first address of the request
  std::optional<std::uint8_t> function;
  std::optional<std::uint8_t> station;
  int first = 1;  // strikes from the n-th fitting request on
  int count = 1;  // so many times; 0 for ever

  int seen = 0;  // fitting requests up to now
};

// Reads NAME[=VALUE][@ADDRESS][/FUNCTION][:STATION][#FIRST][*COUNT], numbers behind "@" and "/" hexadecimal
// with or without an "H" at the end, the others decimal, "*ever" for no end: "crc@00D0H*2", "late=300/04#3",
// "silence*ever". On failure the text says what is wrong.
std::optional<ArmedFault> ParseFault(std::string_view text, std::string& error);

// The faults armed on a line, asked once for each request. The first one that fits and is due strikes.
class FaultBoard {
 public:
  void Arm(const ArmedFault& fault) { armed_.push_back(fault); }
  void Clear() { armed_.clear(); }
  std::size_t Waiting() const { return armed_.size(); }
  // `request` is the whole frame. Counts it for every fault that fits, and drops faults that are used up.
  std::optional<ArmedFault> Strike(std::span<const std::uint8_t> request);

 private:
  std::vector<ArmedFault> armed_;
};

}  // namespace sim
