// SPDX-License-Identifier: GPL-3.0-or-later
// Whether the meter at the other end of a line is the one that was there before. Two registers are read, in
// one attempt each; nothing is written. The port must be open and the interface locked.
#pragma once

#include <optional>
#include <string>

#include "link/registers.h"

namespace vlt {

// What a meter has told of itself. What it was not asked for is empty and is not compared.
struct MeterMark {
  std::optional<int> unit_system = {};
  std::optional<int> specification = {};
  std::optional<int> id_number = {};
};

// What this session knows of the meter of the settings.
MeterMark KnownMark(const SharedState& state);

enum class MeterProof {
  kSame,    // it answers as before
  kSilent,  // it does not answer
  kOther,   // it answers, and differs
};

struct MeterAnswer {
  MeterProof proof = MeterProof::kSame;
  std::string why =
      {};  // of kSilent why there is no answer; of kOther what differs, in the language in force
};

// Asks the meter for its ID number and unit system, and for its specification when `mark` has one. A meter
// that is the same completes `mark` by its ID number.
MeterAnswer ProveMeter(App& app, const Target& target, MeterMark& mark);

}  // namespace vlt
