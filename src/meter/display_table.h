// SPDX-License-Identifier: GPL-3.0-or-later
// Display: what the meter's two display rows show, with which decimal point, and the backlight.
#pragma once

#include "meter/parameter.h"
#include "resources/text_ids.h"

namespace vlt {

inline constexpr Parameter kDisplayTable[] = {
    {.name = "display.channel_1",
     .caption = 179,
     .title = {text::kDisplay1, 179},
     .address = 0x04B0,
     .codes = 43,
     .slot = SlotOf("DISPLAY", "DISPLAY1_SELECT_CH"),
     .exists = Exists::kNotSingleChannel},
    {.name = "display.item_1",
     .caption = 2100,
     .title = {text::kDisplay1, 4670},
     .address = 0x00C0,
     .codes = 18,
     .offer = Offer::kDisplayItems,
     .slot = SlotOf("DISPLAY", "DISPLAY1_SELECT_Data")},
    {.name = "display.decimal_point_1",
     .caption = 2240,
     .title = {text::kDisplay1, 2240},
     .address = 0x00C2,
     .codes = 19,
     .slot = SlotOf("DISPLAY", "DISPLAY1_DECIMAL_POINT_Data")},
    {.name = "display.channel_2",
     .caption = 179,
     .title = {text::kDisplay2, 179},
     .address = 0x04B2,
     .codes = 43,
     .slot = SlotOf("DISPLAY", "DISPLAY2_SELECT_CH"),
     .exists = Exists::kNotSingleChannel},
    {.name = "display.item_2",
     .caption = 2110,
     .title = {text::kDisplay2, 4670},
     .address = 0x00C4,
     .codes = 18,
     .offer = Offer::kDisplayItems,
     .slot = SlotOf("DISPLAY", "DISPLAY2_SELECT_Data")},
    {.name = "display.decimal_point_2",
     .caption = 2240,
     .title = {text::kDisplay2, 2240},
     .address = 0x00C6,
     .codes = 19,
     .slot = SlotOf("DISPLAY", "DISPLAY2_DECIMAL_POINT_Data")},
    {.name = "display.backlight",
     .caption = 4961,
     .address = 0x00C8,
     .words = {text::kOn, 2340},
     .slot = SlotOf("DISPLAY", "LCD_BACKLIGHT_MODE")},
    {.name = "display.lights_out_time",
     .caption = 4961,
     .title = {4961, 4962},
     .address = 0x00CA,
     .offer = Offer::kMinutes,
     .unit = UnitKind::kMinute,
     .slot = SlotOf("DISPLAY", "LCD_BACKLIGHT_TIME")},
};
consteval const Parameter& DisplayRow(std::string_view name) { return RowOf(kDisplayTable, name); }

inline constexpr Block kDisplayBlock{.address = 0x00C0, .count = 6};
inline constexpr Block kDisplayChannelBlock{.address = 0x04B0, .count = 2};

}  // namespace vlt
