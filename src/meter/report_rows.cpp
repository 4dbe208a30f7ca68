// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/report_rows.h"

#include "meter/details_table.h"
#include "meter/display_table.h"
#include "meter/heat_table.h"
#include "meter/process_table.h"
#include "meter/range_table.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr ReportRow kProcessRows[] = {
    {.parameters = {&ProcessRow("sensor_spacing")}, .behind = " 1"},
    {.parameters = {&ProcessRow("sensor_spacing_2")}, .behind = " 2"},
    {.parameters = {&ProcessRow("outer_diameter")}},
    {.parameters = {&ProcessRow("pipe_material")}},
    {.parameters = {&ProcessRow("pipe_sound_velocity")}},
    {.parameters = {&ProcessRow("wall_thickness")}},
    {.parameters = {&ProcessRow("lining_material")}},
    {.parameters = {&ProcessRow("lining_sound_velocity")}},
    {.parameters = {&ProcessRow("lining_thickness")}},
    {.parameters = {&ProcessRow("fluid")}},
    {.parameters = {&ProcessRow("fluid_sound_velocity")}},
    {.parameters = {&ProcessRow("viscosity")}},
    {.parameters = {&ProcessRow("sensor_mount")}},
    {.parameters = {&ProcessRow("sensor_type")}},
};

constexpr int kSupply = text::kReportSupply;
constexpr int kReturn = text::kReportReturn;

constexpr ReportRow kHeatRows[] = {
    {.parameters = {&HeatRow("temperature_unit")}},
    {.parameters = {&HeatRow("flow_unit")}},
    {.parameters = {&HeatRow("total_unit")}},
    {.parameters = {&HeatRow("mode")}},
    {.parameters = {&HeatRow("operation")}},
    {.parameters = {&HeatRow("change_temperature")}},
    {.parameters = {&HeatRow("hysteresis")}},
    {.parameters = {&HeatRow("heating_coefficient")}, .label = {text::kReportHeating}},
    {.parameters = {&HeatRow("cooling_coefficient")}, .label = {text::kReportCooling}},
    {.parameters = {&HeatRow("supply_source")}},
    {.parameters = {&HeatRow("supply_temperature")}},
    {.parameters = {&HeatRow("return_source")}},
    {.parameters = {&HeatRow("return_temperature")}},
    {.parameters = {&HeatRow("input_signal")}},
    {.parameters = {&HeatRow("supply_zero")}, .words = kSupply, .words_in_both_forms = true},
    {.parameters = {&HeatRow("supply_span")}, .words = kSupply},
    {.parameters = {&HeatRow("supply_damping")}, .words = kSupply},
    {.parameters = {&HeatRow("return_zero")}, .words = kReturn, .words_in_both_forms = true},
    {.parameters = {&HeatRow("return_span")}, .words = kReturn},
    {.parameters = {&HeatRow("return_damping")}, .words = kReturn},
};

constexpr ReportRow kRangeRows[] = {
    {.parameters = {&RangeRow("kind")}},
    {.parameters = {&RangeRow("unit")}},
    {.parameters = {&RangeRow("type")}},
    {.parameters = {&RangeRow("full_scale_1")}},
    {.parameters = {&RangeRow("full_scale_2")}},
    {.parameters = {&RangeRow("thermal_full_scale_1")}},
    {.parameters = {&RangeRow("thermal_full_scale_2")}},
    {.parameters = {&RangeRow("hysteresis")}},
    {.parameters = {&RangeRow("burnout")}},
    {.parameters = {&RangeRow("burnout_timer")}},
    {.parameters = {&RangeRow("output_limit_high")}},
    {.parameters = {&RangeRow("output_limit_low")}},
    {.parameters = {&RangeRow("rate_limit")}},
    {.parameters = {&RangeRow("rate_limit_timer")}},
    {.parameters = {&RangeRow("damping")}},
    {.parameters = {&RangeRow("cut_off")}},
    {.parameters = {&RangeRow("zero")}, .label = {750}},
    {.parameters = {&RangeRow("span")}, .label = {text::kReportSpan}},
};

constexpr ReportRow kTotalRows[] = {
    {.parameters = {&TotalRow("mode")}},
    {.parameters = {&TotalRow("unit")}},
    {.parameters = {&TotalRow("rate")}},
    {.parameters = {&TotalRow("preset")}},
    {.parameters = {&TotalRow("thermal_rate")}},
    {.parameters = {&TotalRow("thermal_preset")}},
    {.parameters = {&TotalRow("pulse_width")}, .unit_text = 80},
    {.parameters = {&TotalRow("burnout")}},
    {.parameters = {&TotalRow("burnout_timer")}},
};

constexpr ReportRow kStatusRows[] = {
    {.parameters = {&StatusRow("channel")}, .literal = "CH"},
    {.parameters = {&StatusRow("function")}, .output_name = true},
    {.parameters = {&StatusRow("alarm")}},
    {.parameters = {&StatusRow("flow_switch")}},
    {.parameters = {&StatusRow("flow_switch_high")}, .label = {2460}},
    {.parameters = {&StatusRow("flow_switch_low")}, .label = {2470}},
    {.parameters = {&StatusRow("total_switch")}},
    {.parameters = {&StatusRow("thermal_switch")}},
    {.parameters = {&StatusRow("thermal_switch_high")}, .label = {621}},
    {.parameters = {&StatusRow("thermal_switch_low")}, .label = {622}},
    {.parameters = {&StatusRow("thermal_total_switch")}},
    {.parameters = {&StatusRow("contact_action")}},
};

constexpr ReportRow kDisplayRows[] = {
    {.parameters = {&DisplayRow("channel_1")}, .label = {2100, 179}},
    {.parameters = {&DisplayRow("item_1")}, .label = {2100, 4670}},
    {.parameters = {&DisplayRow("decimal_point_1")}, .label = {2100, 2240}},
    {.parameters = {&DisplayRow("channel_2")}, .label = {2110, 179}},
    {.parameters = {&DisplayRow("item_2")}, .label = {2110, 4670}},
    {.parameters = {&DisplayRow("decimal_point_2")}, .label = {2110, 2240}},
    {.parameters = {&DisplayRow("backlight")}},
    {.parameters = {&DisplayRow("lights_out_time")}, .label = {4961, 4962, 4963}, .unit_in_label = true},
};

constexpr ReportRow kSystemRows[] = {
    {.parameters = {&SystemRow("language")}},
    {.parameters = {&SystemRow("unit")}},
    {.parameters = {&SystemRow("version"), &SystemRow("type")}},
    {.parameters = {&SystemRow("specification")}, .sign = Sign::kApostrophe},
    {.parameters = {&SystemRow("id_number")}, .sign = Sign::kApostrophe},
    {.parameters = {&SystemRow("operation_mode")}},
    {.parameters = {&SystemRow("measurement_mode")}},
    {.parameters = {&SystemRow("calculation")}},
    {.parameters = {&SystemRow("ao1_source")}},
    {.parameters = {&SystemRow("ao2_source")}},
};

constexpr ReportRow kDetailsRows[] = {
    {.parameters = {&DetailsRow("send_pattern")}},
    {.parameters = {&DetailsRow("send_count")}},
    {.parameters = {&DetailsRow("measuring_method")}},
    {.parameters = {&DetailsRow("saturation")}},
    {.parameters = {&DetailsRow("signal_balance")}},
    {.parameters = {&DetailsRow("signal_peak")}},
    {.parameters = {&DetailsRow("trigger_control"), &DetailsRow("trigger_level")}, .label = {870}},
    {.parameters = {&DetailsRow("window_control"), &DetailsRow("open_time_up"),
                    &DetailsRow("open_time_down")}},
    {.parameters = {&DetailsRow("gain_control"), &DetailsRow("gain_up"), &DetailsRow("gain_down")}},
    {.parameters = {&DetailsRow("send_wait_time")}},
};

constexpr ReportSection kSections[] = {
    {.heading = 1640, .subheading = 559, .places = Location::kPipe, .rows = kProcessRows},
    {.heading = 1640, .subheading = 553, .rows = kHeatRows},
    {.heading = 1170, .places = Location::kChannel, .rows = kRangeRows},
    {.heading = 1610, .places = Location::kChannel, .rows = kTotalRows},
    {.heading = 720, .places = Location::kOutput, .rows = kStatusRows},
    {.heading = 2120, .rows = kDisplayRows},
    {.heading = 650, .rows = kSystemRows},
    {.heading = 2000, .places = Location::kPath, .rows = kDetailsRows},
};

}  // namespace

std::span<const ReportSection> ReportSections() { return kSections; }

}  // namespace vlt
