// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/measure_scale.h"

#include <algorithm>
#include <cmath>

#include "live/entry_check.h"
#include "state/shared_state.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kDefaultMax = "1000";
constexpr const char* kDefaultMin = "-1000";
constexpr const char* kDefaultCycle = "1";
constexpr const char* kDefaultPoints = "50";

constexpr double kLowest = -2147483648.0;
constexpr double kHighest = 2147483647.0;
constexpr double kLongestCycle = 3600;

constexpr int kChannelNames[] = {182, 183, 184};
constexpr int kQuantityNames[] = {2220, 2180, 2221};
constexpr std::size_t kVelocity = 1;  // among the quantities

double ScaleValue(const TextBox& box, const char* fallback) {
  return ParseNumber(box.Text()).value_or(ParseNumber(fallback).value_or(0));
}

}  // namespace

// A scale entry: its limits, what it holds at first, where it is kept between openings.
struct MeasureScale::Scale {
  TextBox& box;
  double low;
  double high;
  const char* fallback;
  std::string SharedState::*kept;
};

std::vector<MeasureScale::Scale> MeasureScale::Scales() const {
  return {
      {page_.Max, kLowest, kHighest, kDefaultMax, &SharedState::TrendYScaleMax},
      {page_.Min, kLowest, kHighest, kDefaultMin, &SharedState::TrendYScaleMin},
      {page_.Cycle, 1, kLongestCycle, kDefaultCycle, &SharedState::TrendXScaleCycle},
      {page_.PointText, 1, kHighest, kDefaultPoints, &SharedState::TrendXScalePoint},
  };
}

MeasureScale::MeasureScale(App& app, MeasureControls& page, MeasureValues& values, Trend& trend)
    : app_(app), page_(page), values_(values), trend_(trend) {
  page_.CH_Combo.on_click = [this] { CH_Combo_Click(); };
  page_.Flow_Combo.on_click = [this] {
    app_.state.TrendQuantityIndex = std::max(page_.Flow_Combo.ListIndex(), 0);
  };
  for (const Scale& scale : Scales()) {
    scale.box.on_lost_focus = [this, scale] { CheckScale(scale); };
  }
}

void MeasureScale::Reset() {
  for (const Scale& scale : Scales()) scale.box.SetText(scale.fallback);
}

void MeasureScale::Keep() {
  for (const Scale& scale : Scales()) app_.state.*scale.kept = Trim(scale.box.Text());
}

void MeasureScale::KeepAsTyped() {
  for (const Scale& scale : Scales()) {
    scale.box.on_change = [this, scale] { app_.state.*scale.kept = Trim(scale.box.Text()); };
  }
}

void MeasureScale::Restore() {
  for (const Scale& scale : Scales()) {
    const std::string& kept = app_.state.*scale.kept;
    if (!kept.empty()) scale.box.SetText(kept);
  }
}

bool MeasureScale::CheckScale(const Scale& scale) {
  return CheckEntry(app_, scale.box, scale.low, scale.high);
}

bool MeasureScale::Check() {
  for (const Scale& scale : Scales()) {
    if (!CheckScale(scale)) return false;
  }
  return true;
}

void MeasureScale::Enable(bool enabled) {
  for (const Scale& scale : Scales()) scale.box.SetEnabled(enabled);
}

int MeasureScale::EnteredCycle() const {
  return static_cast<int>(RoundHalfEven(ParseNumber(page_.Cycle.Text()).value_or(1)));
}

void MeasureScale::PrepareTrend() {
  const double points = std::trunc(ScaleValue(page_.PointText, kDefaultPoints));
  trend_.Start(static_cast<std::int64_t>(std::clamp(points, 1.0, kHighest)),
               ScaleValue(page_.Min, kDefaultMin), ScaleValue(page_.Max, kDefaultMax));
}

void MeasureScale::NameLists() {
  for (std::size_t i = 0; i < ChannelNames.size(); ++i) {
    ChannelNames[i] = app_.Text(kChannelNames[i]);
    QuantityNames[i] = app_.Text(kQuantityNames[i]);
  }
}

void MeasureScale::FillChannelList() {
  const bool single = values_.ChannelMode == 1;
  const int kept = app_.state.TrendChannelIndex;
  ComboBox& list = page_.CH_Combo;
  list.Clear();
  for (const std::string& name : ChannelNames) {
    if (list.Count() == 0 || !single) list.AddItem(name);
  }
  list.SetListIndex(kept < 0 || kept >= list.Count() ? 0 : kept);
}

// CH3 of two pipes has no velocity.
void MeasureScale::FillQuantityList() {
  const int kept = app_.state.TrendQuantityIndex;
  const bool has_velocity = !values_.HasNoVelocity(values_.ChosenChannel());
  ComboBox& list = page_.Flow_Combo;
  list.Clear();
  for (const std::string& name : QuantityNames) {
    if (&name != &QuantityNames[kVelocity] || has_velocity) list.AddItem(name);
  }
  list.SetListIndex(kept < 0 || kept >= list.Count() ? 0 : kept);
}

void MeasureScale::CH_Combo_Click() {
  app_.state.TrendChannelIndex = values_.ChosenChannel();
  FillQuantityList();
}

}  // namespace vlt
