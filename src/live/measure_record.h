// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the measure page's log, as texts.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "meter/live_fields.h"
#include "platform/clock.h"

namespace vlt {

// The texts of a channel by the places of live_fields.h.
using FieldTexts = std::array<std::string, kAllFields>;

// The time, then `fields` fields of each channel, each with a comma behind it and the alarm word with an
// apostrophe in front (a spreadsheet would read it as a number), and the error text at the end.
std::string MeasureRecordLine(const LocalTime& time, std::span<const FieldTexts> channels, int fields,
                              const std::string& error);

// First head line: the title, and over the columns of each channel its name, in pointed brackets. A single
// channel without heat has no name.
std::string MeasureTitleLine(const std::string& title, std::span<const std::string> channels, int fields);

// Second head line: the name of the time column and the head of each field, with an apostrophe in front of
// the heads and a comma behind each of them.
std::string MeasureHeadLine(const std::string& time, std::span<const std::string> heads);

}  // namespace vlt
