// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/units.h"

#include <span>

namespace sim {

namespace {

constexpr double kSecond = 1, kMinute = 60, kHour = 3600, kDay = 86400;
constexpr double kGallon = 0.003785411784;  // US, m3
constexpr double kFoot3 = 0.028316846592;
constexpr double kBarrel = 42 * kGallon;
constexpr double kAcreFoot = 43560 * kFoot3;

struct FlowUnit {
  double volume;  // m3
  double time;    // s
};

constexpr FlowUnit kMetricFlow[] = {
    {1e-3, kSecond}, {1e-3, kMinute}, {1e-3, kHour}, {1e-3, kDay}, {1, kDay},   {1e3, kDay},
    {1, kSecond},    {1, kMinute},    {1, kHour},    {1, kDay},    {1e3, kDay}, {1e6, kDay},
};
constexpr FlowUnit kEnglishFlow[] = {
    {kGallon, kSecond},    {kGallon, kMinute},    {kGallon, kHour},     {kGallon, kDay},
    {1e3 * kGallon, kDay}, {1e6 * kGallon, kDay}, {kFoot3, kSecond},    {kFoot3, kMinute},
    {kFoot3, kHour},       {kFoot3, kDay},        {1e3 * kFoot3, kDay}, {1e6 * kFoot3, kDay},
};
// Codes 12 to 17 of both.
constexpr FlowUnit kBarrelFlow[] = {
    {kBarrel, kSecond}, {kBarrel, kMinute},    {kBarrel, kHour},
    {kBarrel, kDay},    {1e3 * kBarrel, kDay}, {1e6 * kBarrel, kDay},
};

constexpr double kMetricVolume[] = {1e-6, 1e-3, 1, 1e3, 1e6, 1e-3 * kBarrel, kBarrel, 1e3 * kBarrel};
constexpr double kEnglishVolume[] = {kGallon,        1e3 * kGallon, kFoot3,        1e3 * kFoot3, 1e6 * kFoot3,
                                     1e-3 * kBarrel, kBarrel,       1e3 * kBarrel, kAcreFoot};

constexpr double kBtu = 1.05505585262e-3;  // MJ
// MJ, GJ, BTU, kBTU, MBTU, kW h, MW h; the flow units are these an hour.
constexpr double kHeat[] = {1, 1e3, kBtu, 1e3 * kBtu, 1e6 * kBtu, 3.6, 3600};

template <typename T>
const T& Pick(std::span<const T> table, int code) {
  return code >= 0 && code < static_cast<int>(table.size()) ? table[code] : table[0];
}

}  // namespace

double FlowFactor(int code, bool english) {
  const FlowUnit& unit = code >= 12 ? Pick<FlowUnit>(kBarrelFlow, code - 12)
                                    : Pick<FlowUnit>(english ? kEnglishFlow : kMetricFlow, code);
  return unit.time / unit.volume;
}

double VolumeFactor(int code, bool english) {
  const std::span<const double> metric = kMetricVolume, feet = kEnglishVolume;
  return 1 / Pick<double>(english ? feet : metric, code);
}

double HeatFactor(int code) { return 1 / Pick<double>(kHeat, code); }

double Temperature(double celsius, int code) {
  if (code == 1) return celsius + 273.15;
  return code == 2 ? celsius * 1.8 + 32 : celsius;
}

double TemperatureDifference(double kelvin, int code) { return code == 2 ? kelvin * 1.8 : kelvin; }

double Celsius(double value, int code) {
  if (code == 1) return value - 273.15;
  return code == 2 ? (value - 32) / 1.8 : value;
}

}  // namespace sim
