// SPDX-License-Identifier: GPL-3.0-or-later
// What stands at an address of the meter, for whoever looks at frames: parameters, live values, conditions
// and commands by the names of the catalogue.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "link/registers.h"
#include "state/app.h"

namespace vlt {

inline constexpr int kBytesPerRegister = 2;

struct NamedRegisters {
  RegisterSpan span;
  std::string name;  // "process.outer_diameter CH1"
  // What `bytes`, those of its registers, say in the language and the units that the program knows.
  std::function<std::string(const App&, std::span<const std::uint8_t> bytes)> value;
};

// Those that lie wholly inside the span, by their addresses. Where several stand for the same registers, the
// first of them.
std::vector<const NamedRegisters*> NamesIn(const RegisterSpan& span);

}  // namespace vlt
