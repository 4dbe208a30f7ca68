// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/tested_meters.h"

#include "values/number_text.h"

namespace vlt {
namespace {

int NumberOf(const std::string& text) { return static_cast<int>(ParseNumber(text).value_or(0)); }

MeterPlace PlaceInForce(const App& app) {
  return {.port = NumberOf(app.state.PortNo), .station = NumberOf(app.state.StationNo)};
}

void Tell(const App& app) {
  if (app.frame != nullptr) app.frame->ShowTestState();
}

}  // namespace

void MeterIsInTest(App& app) {
  if (app.state.MetersInTest.insert(PlaceInForce(app)).second) Tell(app);
}

void MeterTestHasEnded(App& app) {
  if (app.state.MetersInTest.erase(PlaceInForce(app)) != 0) Tell(app);
}

bool IsAnyMeterInTest(const App& app) { return !app.state.MetersInTest.empty(); }

std::string MetersInTestText(const App& app) {
  std::string text;
  for (const MeterPlace& meter : app.state.MetersInTest) {
    if (!text.empty()) text += ", ";
    text += "COM" + std::to_string(meter.port);
    if (meter.station != 0) text += "-" + ZeroPadded(meter.station, 2);
  }
  return text;
}

}  // namespace vlt
