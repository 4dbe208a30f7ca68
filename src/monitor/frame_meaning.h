// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame on the line says, in words.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "state/app.h"
#include "state/line_record.h"

namespace vlt {

// How much is told of a frame with many values.
enum class Telling : std::uint8_t {
  kShort,  // the first and the last name, and how many there are
  kWhole,  // each name with its value
};

// One line in the language in force: what a request asks for, or what came of it, with the names and the
// values of its registers where the catalogue knows them ("process.outer_diameter CH1 = 60.5").
std::string FrameMeaning(const App& app, const LineFrame& frame, Telling telling);

}  // namespace vlt
