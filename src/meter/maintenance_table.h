// SPDX-License-Identifier: GPL-3.0-or-later
// Maintenance: adjustment and check of the analog outputs, checks of the digital outputs, the test mode with
// simulated input, and the measured temperature inputs. All of it is written one register at a time.
#pragma once

#include "meter/parameter.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"

namespace vlt {

inline constexpr Parameter kMaintenanceTable[] = {
    {.name = "maintenance.ao1_adjustment_4ma",
     .caption = 1912,
     .title = {text::kAo1, text::kAdjustment, text::kAt4mA},
     .address = 0x0142,
     .write = WriteWith::kSingle,
     .wire = Wire::kWord,
     .show = Show::kPlain,
     .length = {5, 5},
     .one_meter = true},
    {.name = "maintenance.ao1_adjustment_20ma",
     .caption = 1912,
     .title = {text::kAo1, text::kAdjustment, text::kAt20mA},
     .address = 0x0144,
     .write = WriteWith::kSingle,
     .wire = Wire::kWord,
     .show = Show::kPlain,
     .length = {5, 5},
     .one_meter = true},
    {.name = "maintenance.ao2_adjustment_4ma",
     .caption = 1912,
     .title = {text::kAo2, text::kAdjustment, text::kAt4mA},
     .address = 0x014A,
     .write = WriteWith::kSingle,
     .wire = Wire::kWord,
     .show = Show::kPlain,
     .length = {5, 5},
     .exists = Exists::kNotSingleChannel,
     .one_meter = true},
    {.name = "maintenance.ao2_adjustment_20ma",
     .caption = 1912,
     .title = {text::kAo2, text::kAdjustment, text::kAt20mA},
     .address = 0x014C,
     .write = WriteWith::kSingle,
     .wire = Wire::kWord,
     .show = Show::kPlain,
     .length = {5, 5},
     .exists = Exists::kNotSingleChannel,
     .one_meter = true},
    // One register for both analog outputs.
    {.name = "maintenance.ao_check",
     .caption = 1250,
     .title = {text::kAoCheck},
     .address = 0x0154,
     .write = WriteWith::kSingle,
     .show = Show::kPlain,
     .length = {3, 3},
     .unit = UnitKind::kPercent,
     .never_sent = text::kStartsTest},
    {.name = "maintenance.pulse_check",
     .caption = 1600,
     .address = 0x0156,
     .write = WriteWith::kSingle,
     .show = Show::kPlain,
     .length = {4, 4},
     .unit = UnitKind::kPulsesPerSecond,
     .never_sent = text::kStartsTest},
    {.name = "maintenance.do_check",
     .caption = 241,
     .address = 0x0158,
     .write = WriteWith::kSingle,
     .words = {text::kSwitchedOn, text::kSwitchedOff},
     .never_sent = text::kStartsTest},
    {.name = "maintenance.test_mode",
     .caption = 850,
     .address = 0x015C,
     .write = WriteWith::kSingle,
     .words = {text::kSwitchedOff, text::kSwitchedOn},
     .never_sent = text::kStartsTest},
    {.name = "maintenance.test_input",
     .caption = 2040,
     .title = {text::kTestMode, 2040},
     .address = 0x015E,
     .write = WriteWith::kSingle,
     .show = Show::kPlain,
     .length = {4, 4},
     .unit = UnitKind::kPercent,
     .never_sent = text::kStartsTest},
    {.name = "maintenance.tracking_time",
     .caption = 860,
     .title = {text::kTestMode, 860},
     .address = 0x0160,
     .write = WriteWith::kSingle,
     .show = Show::kPlain,
     .length = {3, 3},
     .unit = UnitKind::kSecond,
     .never_sent = text::kStartsTest},
    {.name = "maintenance.frequency_check",
     .caption = 503,
     .address = 0x0176,
     .write = WriteWith::kSingle,
     .show = Show::kPlain,
     .length = {4, 4},
     .unit = UnitKind::kHertz,
     .exists = Exists::kNotSingleChannel,
     .never_sent = text::kStartsTest},
    {.name = "maintenance.supply_input",
     .caption = 506,
     .address = 0x10F8,
     .function = ReadFunction::kInput,
     .write = WriteWith::kNothing,
     .wire = Wire::kDouble,
     .show = Show::kDigits,
     .digits = 8,
     .exists = Exists::kHeat,
     .measured = true},
    {.name = "maintenance.return_input",
     .caption = 507,
     .address = 0x2480,
     .function = ReadFunction::kInput,
     .write = WriteWith::kNothing,
     .wire = Wire::kDouble,
     .show = Show::kDigits,
     .digits = 8,
     .exists = Exists::kHeat,
     .measured = true},
};
consteval const Parameter& MaintenanceRow(std::string_view name) { return RowOf(kMaintenanceTable, name); }

inline constexpr Block kAo1AdjustmentBlock{.address = 0x0142, .count = 2};
inline constexpr Block kAo2AdjustmentBlock{.address = 0x014A, .count = 2};
// Output checks and test mode.
inline constexpr Block kTestBlock{.address = 0x0154, .count = 7};
inline constexpr Block kFrequencyCheckBlock{.address = 0x0176, .count = 1};
inline constexpr Block kSupplyInputBlock{.function = ReadFunction::kInput, .address = 0x10F8, .count = 4};
inline constexpr Block kReturnInputBlock{.function = ReadFunction::kInput, .address = 0x2480, .count = 4};

// What puts the meter into its test state. A check counts whatever is written, the test mode when it is
// switched on; read, each counts while it is not 0.
inline constexpr const Parameter* kOutputChecks[] = {
    &MaintenanceRow("ao_check"), &MaintenanceRow("pulse_check"), &MaintenanceRow("do_check"),
    &MaintenanceRow("frequency_check")};

// 0 is written to end the test state: all checks and the test mode. It reads 0 when the state has ended.
inline constexpr Block kTestStateBlock{.address = 0x0166, .count = 1};

}  // namespace vlt
