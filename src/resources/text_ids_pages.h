// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts about sources that a meter does not offer, readings that are not complete, and what the
// calculator takes over.
#pragma once

namespace vlt::text {

// Why an output source is not set. %1 the source, %2 the measurement mode.
inline constexpr int kSourceNotOffered = 4340;

// A report of all settings in which parts are missing: the cell in front of each, what the status line tells
// (%1 the parts; kNotReadMore: %2 how many more), what is asked before a complete one is replaced (%1 the
// file, %2 what the status line tells), and what is told when it is not.
inline constexpr int kReportNotRead = 4341;
inline constexpr int kNotRead = 4342;
inline constexpr int kNotReadMore = 4343;
inline constexpr int kReplaceReport = 4344;
inline constexpr int kReportKept = 4345;

// What the calculator has taken from the process page: %1 the channel, %2 the fields; and what not: %1 the
// fields. kTakenNone: %1 the fields, where there is none to take. A field behind which its reason stands: %1
// the field, %2 what the page holds.
inline constexpr int kTaken = 4350;
inline constexpr int kTakenNone = 4351;
inline constexpr int kNotTaken = 4352;
inline constexpr int kOfOtherPipe = 4353;
inline constexpr int kNotOfferedHere = 4354;
// Asked where what was entered would go: %1 the fields with their values, a line each.
inline constexpr int kTypedGoes = 4355;

}  // namespace vlt::text
