// SPDX-License-Identifier: GPL-3.0-or-later
// System: what concerns the meter as a whole, and what it says of its own hardware.
#pragma once

#include "meter/parameter.h"
#include "resources/text_ids_compare.h"

namespace vlt {

// In the order of reading.
inline constexpr Parameter kSystemTable[] = {
    {.name = "system.unit",
     .caption = 4680,
     .address = 0x0100,
     .codes = 21,
     .slot = SlotOf("SYSTEMDISP", "UNIT_FLAG"),
     .decides = true},
    {.name = "system.language",
     .caption = 2250,
     .address = 0x0102,
     .codes = 20,
     .slot = SlotOf("SYSTEMDISP", "LANG_FLAG")},
    {.name = "system.id_number",
     .caption = 661,
     .address = 0x0104,
     .show = Show::kPadded,
     .length = {4, 4},
     .slot = SlotOf("SYSTEMDISP", "ID_NO"),
     .one_meter = true},
    // A new specification makes the meter initialise its memory.
    {.name = "system.specification",
     .caption = 1705,
     .address = 0x0148,
     .write = WriteWith::kSingle,
     .show = Show::kPadded,
     .length = {4, 4},
     .slot = SlotOf("SYSTEMDISP", "SPEC_NO"),
     .never_sent = text::kClearsMemory},
    {.name = "system.version",
     .caption = 900,
     .address = 0x0086,
     .function = ReadFunction::kInput,
     .write = WriteWith::kNothing,
     .wire = Wire::kCharacters,
     .characters = 14,
     .show = Show::kCharacters,
     .slot = SlotOf("SYSTEMDISP", "VERSION"),
     .one_meter = true},
    {.name = "system.type",
     .caption = 900,
     .title = {text::kMeterType},
     .address = 0x0094,
     .function = ReadFunction::kInput,
     .write = WriteWith::kNothing,
     .wire = Wire::kCharacters,
     .characters = 8,
     .show = Show::kCharacters,
     .slot = SlotOf("SYSTEMDISP", "TYPE"),
     .one_meter = true},
    {.name = "system.operation_mode",
     .caption = 422,
     .address = 0x003E,
     .codes = 29,
     .slot = SlotOf("SYSTEMDISP", "OPE_MODE"),
     .decides = true},
    {.name = "system.measurement_mode",
     .caption = 402,
     .address = 0x03E8,
     .codes = 40,
     .slot = SlotOf("SYSTEMDISP", "SOKUTEI_MODE"),
     .exists = Exists::kNotSingleChannel,
     .decides = true},
    {.name = "system.calculation",
     .caption = 406,
     .address = 0x03EA,
     .codes = 41,
     .slot = SlotOf("SYSTEMDISP", "CH3ENZAN"),
     .exists = Exists::kNotSingleChannel},
    {.name = "system.ao1_source",
     .caption = 413,
     .address = 0x03EC,
     .codes = 42,
     .offer = Offer::kSources,
     .slot = SlotOf("SYSTEMDISP", "AO1"),
     .exists = Exists::kNotSingleChannel},
    {.name = "system.ao2_source",
     .caption = 421,
     .address = 0x03EE,
     .codes = 42,
     .offer = Offer::kSources,
     .slot = SlotOf("SYSTEMDISP", "AO2"),
     .exists = Exists::kNotSingleChannel},
};
consteval const Parameter& SystemRow(std::string_view name) { return RowOf(kSystemTable, name); }

inline constexpr Block kDeviceBlock{.address = 0x0100, .count = 3};
inline constexpr Block kSpecificationBlock{.address = 0x0148, .count = 1};
inline constexpr Block kVersionBlock{.function = ReadFunction::kInput, .address = 0x0086, .count = 7};
inline constexpr Block kTypeBlock{.function = ReadFunction::kInput, .address = 0x0094, .count = 4};
// Version and type in one read.
inline constexpr Block kFirmwareBlock{.function = ReadFunction::kInput, .address = 0x0086, .count = 11};
inline constexpr Block kOperationModeBlock{.address = 0x003E, .count = 1};
inline constexpr Block kMeasurementModeBlock{.address = 0x03E8, .count = 1};
inline constexpr Block kCalculationBlock{.address = 0x03EA, .count = 1};
inline constexpr Block kFirstSourceBlock{.address = 0x03EC, .count = 1};
inline constexpr Block kSecondSourceBlock{.address = 0x03EE, .count = 1};

// Memory initialisation: a command with function 06, no parameter.
inline constexpr int kMemoryInitRegister = 0x0152;
inline constexpr int kMemoryInitValue = 100;

}  // namespace vlt
