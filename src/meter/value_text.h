// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter's value as text, codes by their words, and back. What pages show in lists and options is one
// text here.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "meter/catalogue.h"

namespace vlt {

// The value in `bytes` (2 * row.Words() of them) in the language and the units of `facts`: a number as an
// entry shows it, a code as its list text, a code without a text in parentheses: "(7)".
std::string ValueText(const Parameter& row, const ToldFacts& facts, std::span<const std::uint8_t> bytes);

// The same as a cell of a spreadsheet: a code without a text leaves it empty, and a text that begins with the
// sign of a total stands behind an apostrophe.
std::string CellText(const Parameter& row, const ToldFacts& facts, std::span<const std::uint8_t> bytes);

// The unit of a place, without brackets; `channel` is the one that an output follows.
std::string UnitTextAt(const ParameterPlace& place, const ToldFacts& facts, int channel_of_output);

// The texts of a row's codes from 0 on, in the language of `facts`; none for a number.
std::vector<std::string> CodeWords(const Parameter& row, const ToldFacts& facts);

// The text of one code alone; empty where it has none, and for a number.
std::string CodeWord(const Parameter& row, const ToldFacts& facts, int code);

// Why a text is no value of a row.
enum class ValueFault : std::uint8_t {
  kNone,
  kNoNumber,  // these three are the faults of a number, as TextFault has them
  kComma,
  kOutOfRange,  // LeastText and GreatestText of parameter.h tell the limits
  kNoSuchCode,  // neither a code of the row nor the text of one
};
struct EncodedValue {
  std::vector<std::uint8_t> bytes;  // whole registers; empty with a fault
  ValueFault fault = ValueFault::kNone;
};
// The register bytes of a typed value: a number, or for a code its text in either language or its number; a
// number that is the text of an entry is that entry ("8" transmissions). A code without a text is taken in
// parentheses alone. Whether the row may be written is another question (Parameter::Sending).
EncodedValue EncodeValue(const Parameter& row, const ToldFacts& facts, std::string_view text);
// "60.559 -> 60.55": a typed number, and the one that its register takes of it; empty when they are the same.
// `bytes` are those of EncodeValue.
std::string CutText(const Parameter& row, const ToldFacts& facts, std::string_view typed,
                    std::span<const std::uint8_t> bytes);
// What a field says of a typed number that was sent as another one where no one expects it: as 0, or without
// its decimals. Empty for any other; the language is that of `facts`.
std::string CutNote(const Parameter& row, const ToldFacts& facts, std::string_view typed,
                    std::span<const std::uint8_t> bytes);
// Why it can't be sent, in the language of `facts`; empty for kNone.
std::string ValueFaultText(const Parameter& row, const ToldFacts& facts, ValueFault fault);

}  // namespace vlt
