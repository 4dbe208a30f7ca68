// SPDX-License-Identifier: GPL-3.0-or-later
// Factors from SI to the unit codes that registers hold. A code outside its table counts as code 0.
#pragma once

namespace sim {

double FlowFactor(int code, bool english);     // m3/s to the flow unit
double VolumeFactor(int code, bool english);   // m3 to the total unit
double HeatFactor(int code);                   // MJ to the heat total unit, MJ/h to the thermal flow unit
double Temperature(double celsius, int code);  // to degC, K, F
double TemperatureDifference(double kelvin, int code);  // a difference in these
double Celsius(double value, int code);                 // back from them

}  // namespace sim
