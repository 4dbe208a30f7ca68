// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/code_tables.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <span>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// Tables that stand for one of two others, and the plain number.
constexpr int kSensorModels = 6;
constexpr int kFlowUnits = 7;
constexpr int kTotalUnits = 11;
constexpr int kSendCounts = 24;
constexpr int kPlainNumber = 35;
// The halves of those that have no number of their own; below 1, so that no caller reaches them directly.
constexpr int kSensorModelsM627 = -1;
constexpr int kSensorModelsOther = -2;
constexpr int kSendCountsNormal = -3;
constexpr int kSendCountsHighSpeed = -4;

// A table of string ids, closed by 0 when it is not full. A negative id carries an apostrophe in CodeToText.
struct IdTable {
  int number;
  std::array<int, 20> ids;
};

constexpr IdTable kIdTables[] = {
    {1, {2760, 2770, 2780, 2790, 2800, 2810, 2820, 2830, 2840, 2850, 2860, 2861, 2050}},  // pipe material
    {2, {2890, 2900, 2910, 2920, 2930, 2940, 4460, 1100}},                                // lining material
    {3,
     {2950, 2960, 2970, 2980, 2990, 3000, 3010, 3020, 3030, 3040, 3050, 3060, 3070, 3080, 3090, 3100, 3101,
      2200}},                            // fluid
    {4, {3140, 3150, 3151, 3152}},       // sensor mounting
    {8, {2700, 2710, 2720, 2730}},       // range type
    {9, {2420, 2670, 2740, 2750, 750}},  // output on burnout
    {10, {690, 2630, 2640}},             // total mode
    {13, {2670, 2420}},                  // total on burnout
    {14, {2420, -2380, -2390, 2480, 242, 243, 244, 2490, 2500, 2510,
          202,  204,   606,   607,  608, 609, 611, 612,  613,  614}},  // digital output function
    {15, {2519, 2520, 2521}},                                          // alarm kind
    {16, {2540, 2550}},                                                // output logic
    {17, {2420, 1591, 760}},                                           // digital input
    {18,
     {2180, 2220, 2230, -2360, -2380, -2370, -2390, 201, 202, 203, 204, 205, 206, 207, 208,
      209}},                                                 // display item
    {20, {3890, 2280, 2290, 2300, 2310}},                    // meter language
    {21, {2260, 2270}},                                      // unit system
    {22, {4950, 4951}},                                      // meter class
    {23, {3440, 3450, 3460, 3470, 3480, 3490, 3500, 3510}},  // transmit pulse
    {25, {3400, 3410, 3420}},                                // measuring method
    {27, {550, 1050}},                                       // gain control
    {28, {2460, 2470}},                                      // switch side
    {29, {423, 424}},                                        // response
    {30,
     {2180, 2220, 2230, -2360, -2380, -2370, -2390, 450, 201, 202, 203, 204, 205, 206, 207, 208,
      209}},                                    // measure item
    {40, {403, 404, 405}},                      // path mode
    {41, {407, 408, 409, 411}},                 // calculation of CH3
    {42, {414, 415, 416, 417, 418, 419}},       // output source
    {43, {182, 183, 184}},                      // channel
    {60, {555, 556, 557}},                      // temperature unit
    {61, {512, 513, 514, 515, 516, 517, 518}},  // heat flow unit
    {62, {522, 523, 524, 525, 526, 527, 528}},  // heat total unit
    {63, {182, 183, 184}},                      // channel
    {64, {549, 558}},                           // heat use
    {65, {532, 533, 534}},                      // heat mode
    {66, {541, 542}},                           // supply temperature source
    {67, {545, 546}},                           // return temperature source
    {68, {549, 551}},                           // temperature sensor
    {69, {621, 622}},                           // heat switch side
};

// Tables whose texts are the same in both languages.
constexpr std::string_view kPlainValues[] = {"20", "40", "80", "160"};
constexpr std::string_view kPulseWidths[] = {"5.0", "10.0", "50.0", "100.0", "200.0", "500.0", "1000.0"};
constexpr std::string_view kDecimalPoints[] = {"*.******", "**.*****", "***.****", "****.***",
                                               "*****.**", "******.*", "*******."};
constexpr std::string_view kSignalLevels[] = {"0.125V(1024)", "0.25V (2048)", "0.375V(3072)", "0.5V  (4096)"};
constexpr std::string_view kMetricFlow[] = {"L/s",   "L/min",   "L/h",   "L/d",   "kL/d",   "ML/d",
                                            "m3/s",  "m3/min",  "m3/h",  "m3/d",  "km3/d",  "Mm3/d",
                                            "BBL/s", "BBL/min", "BBL/h", "BBL/d", "kBBL/d", "MBBL/d"};
constexpr std::string_view kEnglishFlow[] = {"gal/s", "gal/min", "gal/h", "gal/d", "kgal/d", "Mgal/d",
                                             "ft3/s", "ft3/min", "ft3/h", "ft3/d", "kft3/d", "Mft3/d",
                                             "BBL/s", "BBL/min", "BBL/h", "BBL/d", "kBBL/d", "MBBL/d"};
constexpr std::string_view kMetricTotal[] = {"mL", "L", "m3", "km3", "Mm3", "mBBL", "BBL", "kBBL"};
constexpr std::string_view kEnglishTotal[] = {"gal",  "kgal", "ft3",  "kft3", "Mft3",
                                              "mBBL", "BBL",  "kBBL", "ACRf"};
constexpr std::string_view kModelsM627[] = {"RESERVE", "RESERVE", "WT-11", "WT-12", "WT-13", "WT-14",
                                            "WT-15",   "WT-16",   "WT-17", "WT-18", "WT-19", "WT-20"};
constexpr std::string_view kModelsOther[] = {"RESERVE", "RESERVE", "WT-21", "WT-22", "WT-23", "WT-24",
                                             "WT-25",   "WT-26",   "WT-27", "WT-28", "WT-29", "WT-30"};
constexpr std::string_view kCountsNormal[] = {"", "8", "16", "32", "64", "128", "256"};
constexpr std::string_view kCountsHighSpeed[] = {"4", "8", "16", "32", "64", "128"};

struct LiteralTable {
  int number;
  std::span<const std::string_view> texts;
};

constexpr LiteralTable kLiteralTables[] = {
    {5, kPlainValues},
    {12, kPulseWidths},
    {19, kDecimalPoints},
    {26, kSignalLevels},
    {31, kMetricFlow},
    {32, kEnglishFlow},
    {33, kMetricTotal},
    {34, kEnglishTotal},
    {kSensorModelsM627, kModelsM627},
    {kSensorModelsOther, kModelsOther},
    {kSendCountsNormal, kCountsNormal},
    {kSendCountsHighSpeed, kCountsHighSpeed},
};

// Alarms by position from the left; 0 where the meter has none.
constexpr std::array<int, 16> kAlarmIds = {4921, 4922, 4923, 4924, 4925, 4926, 4927, 4928,
                                           4929, 4918, 4917, 0,    0,    0,    4930, 4919};

int ResolveTable(const CodeContext& context, int table) {
  const bool metric = context.unit_flag == 0;
  switch (table) {
    case kSensorModels:
      return context.model_code == "M627" ? kSensorModelsM627 : kSensorModelsOther;
    case kFlowUnits:
      return metric ? 31 : 32;
    case kTotalUnits:
      return metric ? 33 : 34;
    case kSendCounts:
      return context.operation_mode == 1 ? kSendCountsHighSpeed : kSendCountsNormal;
    default:
      return table;
  }
}

template <typename Tables>
auto FindTable(const Tables& tables, int number) {
  const auto found =
      std::find_if(std::begin(tables), std::end(tables), [&](const auto& t) { return t.number == number; });
  return found == std::end(tables) ? nullptr : &*found;
}

std::vector<std::string> Texts(const CodeContext& context, int table, bool apostrophes) {
  std::vector<std::string> texts;
  if (table < 1) return texts;
  const int number = ResolveTable(context, table);
  if (const LiteralTable* literals = FindTable(kLiteralTables, number)) {
    texts.assign(literals->texts.begin(), literals->texts.end());
  }
  if (const IdTable* table_of_ids = FindTable(kIdTables, number)) {
    for (const int id : table_of_ids->ids) {
      if (id == 0) break;
      texts.push_back((apostrophes && id < 0 ? "'" : "") +
                      std::string(LookupText(std::abs(id), context.language)));
    }
  }
  return texts;
}

}  // namespace

std::string CodeToText(const CodeContext& context, int table, std::int32_t code) {
  if (table == kPlainNumber) return ZeroPadded(code, 4);
  const std::vector<std::string> texts = CodeTexts(context, table);
  const bool known = code >= 0 && static_cast<std::size_t>(code) < texts.size();
  return known ? texts[static_cast<std::size_t>(code)] : std::string();
}

std::vector<std::string> CodeTexts(const CodeContext& context, int table) {
  return Texts(context, table, true);
}

std::vector<std::string> ListTexts(const CodeContext& context, int table) {
  std::vector<std::string> texts = Texts(context, table, false);
  std::erase(texts, std::string());
  return texts;
}

std::string AlarmText(Language language, int bit) {
  if (bit < 0 || bit > 15) return {};
  const int id = kAlarmIds[static_cast<std::size_t>(bit)];
  return id == 0 ? std::string() : LookupText(id, language);
}

std::array<std::string, 16> AlarmRows(Language language) {
  std::array<std::string, 16> rows;
  std::transform(kAlarmIds.begin(), kAlarmIds.end(), rows.begin(),
                 [&](int id) { return std::string(LookupText(id == 0 ? text::kReserve : id, language)); });
  return rows;
}

}  // namespace vlt
