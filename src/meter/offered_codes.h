// SPDX-License-Identifier: GPL-3.0-or-later
// The one answer to which codes a meter offers at a place: what a list holds, what the index of an entry in a
// parameter file means, and what may be sent to a meter of another shape or by a word.
#pragma once

#include <string>
#include <vector>

#include "meter/catalogue.h"

namespace vlt {

// As the channel of a row of the display: none is chosen yet.
inline constexpr int kNoChannel = -1;

// The codes in the order of the list, none twice; none for a number. `display_channel` counts for an item of
// the display alone: the code of the channel that its row shows. The measuring channels offer the same, and
// more than the computed one.
std::vector<int> OfferedCodes(const ParameterPlace& place, const MeterFacts& facts, int display_channel = 0);
bool IsOffered(const ParameterPlace& place, const MeterFacts& facts, int code);

// The entries of these codes, in the language of `facts`: their words, or the numbers of a row without words.
std::vector<std::string> EntriesOf(const Parameter& row, const ToldFacts& facts,
                                   const std::vector<int>& codes);

// The row that holds the channel of an item of the display; null for any other row.
const Parameter* ChannelOfItem(const Parameter& row);

}  // namespace vlt
