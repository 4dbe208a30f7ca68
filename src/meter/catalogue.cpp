// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/catalogue.h"

#include <algorithm>
#include <tuple>

#include "meter/details_table.h"
#include "meter/display_table.h"
#include "meter/heat_table.h"
#include "meter/maintenance_table.h"
#include "meter/process_table.h"
#include "meter/range_table.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "resources/string_table.h"

namespace vlt {
namespace {

// --- the orders in which the pages write
// ---------------------------------------------------------------------

constexpr const Parameter* kProcessWrites[] = {
    &ProcessRow("outer_diameter"),   &ProcessRow("pipe_material"),   &ProcessRow("pipe_sound_velocity"),
    &ProcessRow("wall_thickness"),   &ProcessRow("lining_material"), &ProcessRow("lining_sound_velocity"),
    &ProcessRow("lining_thickness"), &ProcessRow("fluid"),           &ProcessRow("fluid_sound_velocity"),
    &ProcessRow("viscosity"),        &ProcessRow("sensor_mount"),    &ProcessRow("sensor_type")};

constexpr const Parameter* kHeatWrites[] = {&HeatRow("temperature_unit"),    &HeatRow("flow_unit"),
                                            &HeatRow("total_unit"),          &HeatRow("mode"),
                                            &HeatRow("operation"),           &HeatRow("change_temperature"),
                                            &HeatRow("hysteresis"),          &HeatRow("heating_coefficient"),
                                            &HeatRow("cooling_coefficient"), &HeatRow("supply_source"),
                                            &HeatRow("supply_temperature"),  &HeatRow("return_source"),
                                            &HeatRow("return_temperature"),  &HeatRow("input_signal"),
                                            &HeatRow("supply_zero"),         &HeatRow("supply_span"),
                                            &HeatRow("return_zero"),         &HeatRow("return_span"),
                                            &HeatRow("supply_damping"),      &HeatRow("return_damping")};

constexpr const Parameter* kRangeWrites[] = {&RangeRow("kind"),
                                             &RangeRow("unit"),
                                             &RangeRow("type"),
                                             &RangeRow("full_scale_1"),
                                             &RangeRow("full_scale_2"),
                                             &RangeRow("thermal_full_scale_1"),
                                             &RangeRow("thermal_full_scale_2"),
                                             &RangeRow("hysteresis"),
                                             &RangeRow("burnout"),
                                             &RangeRow("burnout_timer"),
                                             &RangeRow("output_limit_high"),
                                             &RangeRow("output_limit_low"),
                                             &RangeRow("rate_limit"),
                                             &RangeRow("rate_limit_timer"),
                                             &RangeRow("damping"),
                                             &RangeRow("cut_off"),
                                             &RangeRow("zero"),
                                             &RangeRow("span")};

constexpr const Parameter* kTotalWrites[] = {
    &TotalRow("mode"),          &TotalRow("unit"),         &TotalRow("rate"),
    &TotalRow("preset"),        &TotalRow("pulse_width"),  &TotalRow("burnout"),
    &TotalRow("burnout_timer"), &TotalRow("thermal_rate"), &TotalRow("thermal_preset")};

// The page writes what the chosen function needs; of these each comes behind the ones in front of it.
constexpr const Parameter* kStatusWrites[] = {&StatusRow("channel"),
                                              &StatusRow("function"),
                                              &StatusRow("alarm"),
                                              &StatusRow("flow_switch"),
                                              &StatusRow("flow_switch_high"),
                                              &StatusRow("flow_switch_low"),
                                              &StatusRow("total_switch"),
                                              &StatusRow("thermal_switch"),
                                              &StatusRow("thermal_switch_high"),
                                              &StatusRow("thermal_switch_low"),
                                              &StatusRow("thermal_total_switch"),
                                              &StatusRow("contact_action")};

constexpr const Parameter* kDisplayWrites[] = {
    &DisplayRow("channel_1"), &DisplayRow("item_1"),         &DisplayRow("decimal_point_1"),
    &DisplayRow("channel_2"), &DisplayRow("item_2"),         &DisplayRow("decimal_point_2"),
    &DisplayRow("backlight"), &DisplayRow("lights_out_time")};

constexpr const Parameter* kSystemWrites[] = {
    &SystemRow("language"),         &SystemRow("unit"),        &SystemRow("operation_mode"),
    &SystemRow("measurement_mode"), &SystemRow("calculation"), &SystemRow("ao1_source"),
    &SystemRow("ao2_source"),       &SystemRow("id_number"),   &SystemRow("specification")};

constexpr const Parameter* kDetailsWrites[] = {
    &DetailsRow("send_pattern"),    &DetailsRow("send_count"),     &DetailsRow("measuring_method"),
    &DetailsRow("saturation"),      &DetailsRow("signal_balance"), &DetailsRow("signal_peak"),
    &DetailsRow("trigger_control"), &DetailsRow("trigger_level"),  &DetailsRow("window_control"),
    &DetailsRow("open_time_up"),    &DetailsRow("open_time_down"), &DetailsRow("gain_control"),
    &DetailsRow("gain_up"),         &DetailsRow("gain_down"),      &DetailsRow("send_wait_time")};

constexpr const Parameter* kMaintenanceWrites[] = {
    &MaintenanceRow("ao1_adjustment_4ma"), &MaintenanceRow("ao1_adjustment_20ma"),
    &MaintenanceRow("ao2_adjustment_4ma"), &MaintenanceRow("ao2_adjustment_20ma"),
    &MaintenanceRow("ao_check"),           &MaintenanceRow("do_check"),
    &MaintenanceRow("pulse_check"),        &MaintenanceRow("frequency_check"),
    &MaintenanceRow("test_mode"),          &MaintenanceRow("test_input"),
    &MaintenanceRow("tracking_time")};

constexpr ParameterGroup kGroups[] = {
    {"process", 1640, kProcessTable, kProcessWrites},
    {"heat", 553, kHeatTable, kHeatWrites},
    {"range", 1170, kRangeTable, kRangeWrites},
    {"total", 1610, kTotalTable, kTotalWrites},
    {"status", 720, kStatusTable, kStatusWrites},
    {"display", 2120, kDisplayTable, kDisplayWrites},
    {"system", 650, kSystemTable, kSystemWrites},
    {"details", 2000, kDetailsTable, kDetailsWrites},
    {"maintenance", 1070, kMaintenanceTable, kMaintenanceWrites},
};

// --- names
// ---------------------------------------------------------------------------------------------------

// Joined by blanks; a caption's own blanks at its ends do not belong to a title.
std::string Joined(std::span<const int> ids, Language language) {
  std::string joined;
  for (const int id : ids) {
    if (id == 0) break;
    std::string part = LookupText(id, language);
    part.erase(part.find_last_not_of(' ') + 1);
    joined += (joined.empty() ? "" : " ") + part;
  }
  return joined;
}

// How many places of a kind the largest meter has.
int MostPlaces(Location location) { return LocationCount(location, MeterFacts{}); }

}  // namespace

std::span<const ParameterGroup> ParameterGroups() { return kGroups; }

const ParameterGroup& GroupOf(const Parameter& row) {
  return *std::find_if(std::begin(kGroups), std::end(kGroups), [&](const ParameterGroup& group) {
    return &row >= group.rows.data() && &row < group.rows.data() + group.rows.size();
  });
}

const Parameter* FindParameter(std::string_view name) {
  for (const ParameterGroup& group : kGroups) {
    for (const Parameter& row : group.rows) {
      if (row.name == name) return &row;
    }
  }
  return nullptr;
}

std::ptrdiff_t PlaceInWriting(const Parameter& row) {
  const ParameterGroup& group = GroupOf(row);
  const auto at = std::find(group.write_order.begin(), group.write_order.end(), &row);
  const auto place = at - group.write_order.begin();
  return at != group.write_order.end() ? place : place + (&row - group.rows.data());
}

bool InCatalogueOrder(const ParameterPlace& a, const ParameterPlace& b) {
  const ParameterGroup* group_a = &GroupOf(*a.row);
  const ParameterGroup* group_b = &GroupOf(*b.row);
  return std::tie(group_a, a.index, a.row) < std::tie(group_b, b.index, b.row);
}

bool HasPlace(const ParameterPlace& place, const MeterFacts& facts) {
  if (ExistsIn(*place.row, facts, place.index)) return true;
  const bool heat_unit = place.row == &HeatRow("temperature_unit") || place.row == &HeatRow("flow_unit") ||
                         place.row == &HeatRow("total_unit");
  return heat_unit && place.index == 0 && !LacksHeatRegisters(facts);
}

std::vector<ParameterPlace> PlacesOf(const MeterFacts& facts) {
  std::vector<ParameterPlace> places;
  for (const ParameterGroup& group : kGroups) {
    for (int index = 0; index < kMostPlaces; ++index) {
      for (const Parameter& row : group.rows) {
        if (!row.measured && HasPlace({&row, index}, facts)) places.push_back({&row, index});
      }
    }
  }
  return places;
}

int PlaceIndexOf(const Parameter& row, std::string_view name) {
  if (name.empty()) return 0;
  for (int index = 0; index < MostPlaces(row.location); ++index) {
    if (PlaceName(row, index) == name) return index;
  }
  return -1;
}

std::string GroupTitle(const ParameterGroup& group, Language language) {
  return LookupText(group.title, language);
}

std::string RowTitle(const Parameter& row, Language language) {
  return row.title[0] != 0 ? Joined(row.title, language) : Joined({&row.caption, 1}, language);
}

std::string PlaceTitle(const ParameterPlace& place, Language language) {
  const std::string name = PlaceName(*place.row, place.index);
  return GroupTitle(GroupOf(*place.row), language) + (name.empty() ? "" : " " + name) + " " +
         RowTitle(*place.row, language);
}

}  // namespace vlt
