// The lines of the measure page's log, as texts.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "platform/clock.h"

namespace vlt {

// Fields of a channel: the first ones always, the others with heat.
inline constexpr int kPlainFields = 8;
inline constexpr int kAllFields = 17;
// Place of the word of alarm bits among them.
inline constexpr int kRasField = 7;

using FieldTexts = std::array<std::string, kAllFields>;

// The time, then `fields` fields of each channel, each with a comma behind it and the alarm word with an
// apostrophe in front (a spreadsheet would read it as a number), and the error text at the end.
std::string MeasureRecordLine(const LocalTime& time, std::span<const FieldTexts> channels, int fields,
                              const std::string& error);

// First head line: the title, and over the columns of each channel its name. A single channel without heat
// has no name.
std::string MeasureTitleLine(const std::string& title, std::span<const std::string> channels, int fields);

// Second head line: the name of the time column and the head of each field, with an apostrophe in front of
// the heads and a comma behind each of them.
std::string MeasureHeadLine(const std::string& time, std::span<const std::string> heads);

}  // namespace vlt
