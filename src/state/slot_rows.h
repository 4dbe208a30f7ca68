// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter file's keys in the order of the file. Each row is a slot of PageSlots: the one list of what
// pages keep and files hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "state/shared_state.h"
#include "values/unit_kind.h"

namespace vlt {

struct SlotRow {
  const char* section;
  const char* key;
  // What a file without the key gives, or null for a key that is written and never read.
  const char* absent;
  // The number behind a key that holds the channel or output of a page, else null.
  int SharedState::*number = nullptr;
  // For a unit caption that loses its meaning when a unit of this kind is read anew from the meter.
  UnitKind unit = UnitKind::kNone;
  // The text behind a key that the settings file holds too, else null: one store for both files.
  std::string SharedState::*text = nullptr;
  // Which entry of a list, which of two options is chosen (-1 for none): a whole number. Texts of entries
  // come back as they were typed.
  bool is_choice = false;
};

constexpr SlotRow Choice(const char* section, const char* key, const char* absent = "") {
  return {section, key, absent, nullptr, UnitKind::kNone, nullptr, true};
}

inline constexpr SlotRow kSlotRows[] = {
    {"PROCESS SETTING", "SENSOR_SPACING_Data", ""},
    {"PROCESS SETTING", "SENSOR_SPACING_Unit", "0", nullptr, UnitKind::kLength},
    {"PROCESS SETTING", "SENSOR_SPACING2_Data", ""},
    {"PROCESS SETTING", "OUTER_DIAMETER_Data", ""},
    {"PROCESS SETTING", "OUTER_DIAMETER_Unit", "0", nullptr, UnitKind::kLength},
    Choice("PROCESS SETTING", "PIPE_MATERIAL_Data"),
    {"PROCESS SETTING", "PIPE_S_V_Data", ""},
    {"PROCESS SETTING", "PIPE_S_V_Unit", "0", nullptr, UnitKind::kVelocity},
    {"PROCESS SETTING", "WALL_THICKNESS_Data", ""},
    {"PROCESS SETTING", "WALL_THICKNESS_Unit", "0", nullptr, UnitKind::kLength},
    Choice("PROCESS SETTING", "LINING_MATERIAL_Data"),
    {"PROCESS SETTING", "LINING_S_V_Data", ""},
    {"PROCESS SETTING", "LINING_S_V_Unit", "0", nullptr, UnitKind::kVelocity},
    {"PROCESS SETTING", "LINING_THICKNESS_Data", ""},
    {"PROCESS SETTING", "LINING_THICKNESS_Unit", "0", nullptr, UnitKind::kLength},
    Choice("PROCESS SETTING", "KIND_OF_FLUID_Data"),
    {"PROCESS SETTING", "FLUID_S_V_Data", ""},
    {"PROCESS SETTING", "FLUID_S_V_Unit", "0", nullptr, UnitKind::kVelocity},
    {"PROCESS SETTING", "VISCOSITY_Data", ""},
    {"PROCESS SETTING", "VISCOSITY_Unit", "0", nullptr, UnitKind::kViscosity},
    Choice("PROCESS SETTING", "SENSOR_MOUNT_Data"),
    Choice("PROCESS SETTING", "SENSOR_TYPE_Data"),
    {"PROCESS SETTING", "CHANNEL", "0", &SharedState::ProcessChannel},
    Choice("HEAT SETTING", "TEMP_Data"),
    Choice("HEAT SETTING", "HEATFLOWRATE_Data"),
    Choice("HEAT SETTING", "HEATFLOWRATESEKISAN_Data"),
    Choice("HEAT SETTING", "MODE_Data"),
    Choice("HEAT SETTING", "RUN_Data"),
    {"HEAT SETTING", "SWITCHTEMP_Data", ""},
    {"HEAT SETTING", "SWITCHTEMP_Unit", "0", nullptr, UnitKind::kTemperature},
    {"HEAT SETTING", "HYSTERESIS_Data", ""},
    {"HEAT SETTING", "HYSTERESIS_Unit", "0", nullptr, UnitKind::kTemperature},
    {"HEAT SETTING", "HTEMPCONV_Data", ""},
    {"HEAT SETTING", "CTEMPCONV_Data", ""},
    Choice("HEAT SETTING", "SUPPLYTEMP_Data"),
    {"HEAT SETTING", "CONFIGSUPPLYTEMP_Data", ""},
    {"HEAT SETTING", "CONFIGSUPPLYTEMP_Unit", "0", nullptr, UnitKind::kTemperature},
    Choice("HEAT SETTING", "RETURNTEMP_Data"),
    {"HEAT SETTING", "CONFIGRETURNTEMP_Data", ""},
    {"HEAT SETTING", "CONFIGRETURNTEMP_Unit", "0", nullptr, UnitKind::kTemperature},
    Choice("HEAT SETTING", "TEMPINPUTSIG_Data"),
    {"HEAT SETTING", "SUPPLYTEMPZERO_Data", ""},
    {"HEAT SETTING", "SUPPLYTEMPZERO_Unit", "0", nullptr, UnitKind::kTemperature},
    {"HEAT SETTING", "SUPPLYTEMPSPAN_Data", ""},
    {"HEAT SETTING", "SUPPLYTEMPSPAN_Unit", "0"},
    {"HEAT SETTING", "SUPPLYTEMPFILTER_Data", ""},
    {"HEAT SETTING", "SUPPLYTEMPFILTER_Unit", "0"},
    {"HEAT SETTING", "RETURNTEMPZERO_Data", ""},
    {"HEAT SETTING", "RETURNTEMPZERO_Unit", "0", nullptr, UnitKind::kTemperature},
    {"HEAT SETTING", "RETURNTEMPSPAN_Data", ""},
    {"HEAT SETTING", "RETURNTEMPSPAN_Unit", "0"},
    {"HEAT SETTING", "RETURNTEMPFILTER_Data", ""},
    {"HEAT SETTING", "RETURNTEMPFILTER_Unit", "0"},
    {"RANGE", "CHANNEL", "0", &SharedState::RangeChannel},
    Choice("RANGE", "RANGE_KIND_Data"),
    Choice("RANGE", "RANGE_UNIT_Data"),
    Choice("RANGE", "RANGE_TYPE_Data"),
    {"RANGE", "FULL_SCALE1_Data", ""},
    {"RANGE", "FULL_SCALE1_Unit", "0", nullptr, UnitKind::kFlow},
    {"RANGE", "FULL_SCALE2_Data", ""},
    {"RANGE", "FULL_SCALE2_Unit", "0", nullptr, UnitKind::kFlow},
    {"RANGE", "H_FULL_SCALE1_Data", ""},
    {"RANGE", "H_FULL_SCALE1_Unit", "0", nullptr, UnitKind::kHeatFlow},
    {"RANGE", "H_FULL_SCALE2_Data", ""},
    {"RANGE", "H_FULL_SCALE2_Unit", "0", nullptr, UnitKind::kHeatFlow},
    {"RANGE", "RANGE_HYSTERISIS_Data", ""},
    Choice("RANGE", "OUTPUT_BURNOUT_Data"),
    {"RANGE", "RANGE_BURNOUT_TIMER_Data", ""},
    {"RANGE", "OUTPUT_LIMIT_High_Data", ""},
    {"RANGE", "OUTPUT_LIMIT_Low_Data", ""},
    {"RANGE", "RATE_LIMIT_Data", ""},
    {"RANGE", "RATE_LIMIT_Unit", "0", nullptr, UnitKind::kFlow},
    {"RANGE", "RATE_LIMIT_TIMER_Data", ""},
    {"RANGE", "DUMPING_Data", ""},
    {"RANGE", "LOW_FLOW_OUTPUT_CUT_Data", ""},
    {"RANGE", "LOW_FLOW_OUTPUT_CUT_Unit", "0", nullptr, UnitKind::kFlow},
    {"RANGE", "ZERO_Data", ""},
    {"RANGE", "ZERO_Unit", "0", nullptr, UnitKind::kFlow},
    {"RANGE", "SPAN_Data", ""},
    {"TOTAL", "CHANNEL", "0", &SharedState::TotalChannel},
    Choice("TOTAL", "TOTAL_MODE_Data"),
    Choice("TOTAL", "TOTAL_UNIT_Data"),
    {"TOTAL", "TOTAL_RATE_Data", ""},
    {"TOTAL", "TOTAL_RATE_Unit", "0", nullptr, UnitKind::kTotal},
    {"TOTAL", "F_TOTAL_PRESET_Data", ""},
    {"TOTAL", "F_TOTAL_PRESET_Unit", "0", nullptr, UnitKind::kTotal},
    {"TOTAL", "H_TOTAL_RATE_Data", ""},
    {"TOTAL", "H_TOTAL_RATE_Unit", "0", nullptr, UnitKind::kHeatTotal},
    {"TOTAL", "H_TOTAL_PRESET_Data", ""},
    {"TOTAL", "H_TOTAL_PRESET_Unit", "0", nullptr, UnitKind::kHeatTotal},
    Choice("TOTAL", "TOTAL_PULSE_WIDTH1_Data"),
    {"TOTAL", "TOTAL_PULSE_WIDTH1_Unit", nullptr},
    Choice("TOTAL", "TOTAL_BURNOUT_Data"),
    {"TOTAL", "TOTAL_BURNOUT_TIMER_Data", ""},
    {"STATUS", "DO", "0", &SharedState::OutputIndex},
    Choice("STATUS", "CH_SELECT"),
    Choice("STATUS", "DO_OUTPUT_Data"),
    Choice("STATUS", "DO_ALARM_Data"),
    Choice("STATUS", "DO_FLOW_SW_Data"),
    {"STATUS", "DO_FLOW_SW_HIGH_Data", ""},
    {"STATUS", "DO_FLOW_SW_HIGH_Unit", "0", nullptr, UnitKind::kFlow},
    {"STATUS", "DO_FLOW_SW_LOW_Data", ""},
    {"STATUS", "DO_FLOW_SW_LOW_Unit", "0", nullptr, UnitKind::kFlow},
    {"STATUS", "DO_TOTAL_SW_Data", ""},
    {"STATUS", "DO_TOTAL_SW_Unit", "0", nullptr, UnitKind::kTotal},
    Choice("STATUS", "H_FLOW_SW_Data"),
    {"STATUS", "H_FLOW_SW_HIGH_Data", ""},
    {"STATUS", "H_FLOW_SW_HIGH_Unit", "0", nullptr, UnitKind::kHeatFlow},
    {"STATUS", "H_FLOW_SW_LOW_Data", ""},
    {"STATUS", "H_FLOW_SW_LOW_Unit", "0", nullptr, UnitKind::kHeatFlow},
    {"STATUS", "H_TOTAL_SW_Data", ""},
    {"STATUS", "H_TOTAL_SW_Unit", "0", nullptr, UnitKind::kHeatTotal},
    Choice("STATUS", "DO_CONTACT_ACTION_Data"),
    {"DISPLAY", "DISPLAY1_SELECT_CH", ""},
    Choice("DISPLAY", "DISPLAY1_SELECT_Data"),
    Choice("DISPLAY", "DISPLAY1_DECIMAL_POINT_Data"),
    {"DISPLAY", "DISPLAY2_SELECT_CH", ""},
    Choice("DISPLAY", "DISPLAY2_SELECT_Data"),
    Choice("DISPLAY", "DISPLAY2_DECIMAL_POINT_Data"),
    Choice("DISPLAY", "LCD_BACKLIGHT_MODE"),
    Choice("DISPLAY", "LCD_BACKLIGHT_TIME"),
    Choice("SYSTEMDISP", "LANG_FLAG"),
    Choice("SYSTEMDISP", "UNIT_FLAG"),
    {"SYSTEMDISP", "TYPE", ""},
    {"SYSTEMDISP", "VERSION", ""},
    {"SYSTEMDISP", "ID_NO", ""},
    {"SYSTEMDISP", "SPEC_NO", ""},
    Choice("SYSTEMDISP", "OPE_MODE"),
    Choice("SYSTEMDISP", "SOKUTEI_MODE"),
    Choice("SYSTEMDISP", "CH3ENZAN"),
    Choice("SYSTEMDISP", "AO1"),
    Choice("SYSTEMDISP", "AO2"),
    {"MEASURE", "Y-SCALE MAX", "", nullptr, UnitKind::kNone, &SharedState::TrendYScaleMax},
    {"MEASURE", "Y-SCALE MIN", "", nullptr, UnitKind::kNone, &SharedState::TrendYScaleMin},
    {"MEASURE", "X-SCALE CYCLE", "", nullptr, UnitKind::kNone, &SharedState::TrendXScaleCycle},
    {"MEASURE", "X-SCALE POINT", "", nullptr, UnitKind::kNone, &SharedState::TrendXScalePoint},
    {"TDELTA", "CHANNEL_DETAIL", "0", &SharedState::DetailChannel},
    Choice("TDELTA", "SEND_PATTERN"),
    Choice("TDELTA", "SEND_COUNT"),
    Choice("TDELTA", "MEASURE_METHOD"),
    {"TDELTA", "SATURATE_LEVEL", ""},
    {"TDELTA", "RECEIVE_BALANCE", ""},
    Choice("TDELTA", "SIGNAL_PEEK"),
    Choice("TDELTA", "TRIGGER_LEVEL_CTL", "0"),
    {"TDELTA", "TRIGGER_LEVEL", ""},
    Choice("TDELTA", "WINDOW_CTL", "0"),
    {"TDELTA", "U:OPEN_TIME", ""},
    {"TDELTA", "D:OPEN_TIME", ""},
    Choice("TDELTA", "AGC_CTL", "0"),
    {"TDELTA", "U:AGC", ""},
    {"TDELTA", "D:AGC", ""},
    {"TDELTA", "SEND_WAIT_TIME", ""},
};

// Place of a row in kSlotRows.
enum class Slot : std::int16_t { kNone = -1 };

// The slot of a key. In a constant expression a key that is not there does not compile; elsewhere it throws
// std::out_of_range.
constexpr Slot SlotOf(std::string_view section, std::string_view key) {
  for (std::size_t i = 0; i < std::size(kSlotRows); ++i) {
    if (section == kSlotRows[i].section && key == kSlotRows[i].key) return static_cast<Slot>(i);
  }
  throw std::out_of_range("no slot for this key");
}

}  // namespace vlt
