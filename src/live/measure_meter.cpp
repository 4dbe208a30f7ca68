// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/measure_meter.h"

#include "files/settings_file.h"
#include "meter/device_queries.h"
#include "resources/text_ids.h"
#include "state/device_facts.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// Captions that belong to units which are about to be read anew.
void ClearUnitCaches(App& app) {
  ClearProcessCache(app);
  ClearFlowCache(app);
  ClearTotalCache(app);
  ClearHeatFlowCache(app);
  ClearHeatTotalCache(app);
  ClearTempCache(app);
}

}  // namespace

MeasureMeter::MeasureMeter(App& app, MeasureValues& values, const LiveRun& run)
    : app_(app), values_(values), run_(run) {}

bool MeasureMeter::Ask() {
  mark_ = KnownMark(app_.state);
  if (const int system = GetUnitFlag(app_); system >= 0) mark_.unit_system = system;
  ClearUnitCaches(app_);
  if (run_.GoesOn()) {
    values_.ChannelMode = GetChannelConfig(app_);
    mark_.specification = KnownMark(app_.state).specification;
    TellUnknownChannels();
  }
  values_.heat = values_.ChannelMode != 3 && HasHeatRegisters(app_.state);
  for (int ch = 0; ch < kChannels; ++ch) {
    if (run_.GoesOn()) GetRangeUnit(app_, ch);
    if (run_.GoesOn()) GetTotalUnit(app_, ch);
  }
  if (HasHeatRegisters(app_.state)) {
    for (const auto query : {GetHeatFlowUnit, GetHeatTotalUnit, GetTempUnit}) {
      if (run_.GoesOn()) query(app_);
    }
  }
  name_questions_ = GetIdentifyRuns(app_) ? LiveRun::kMostNameQuestions : 0;
  Learn();
  return run_.GoesOn();
}

// The number that the session knows may be that of a meter from before.
void MeasureMeter::Learn() {
  if (name_questions_ == 0 || !run_.GoesOn()) return;
  MeterMark told{.unit_system = mark_.unit_system};
  if (ProveMeter(app_, OwnStation(app_, kModeUnitQuery), told).proof != MeterProof::kSame) {
    --name_questions_;
    return;
  }
  name_questions_ = 0;
  mark_.id_number = told.id_number;
}

MeterAnswer MeasureMeter::Prove() { return ProveMeter(app_, OwnStation(app_, kModeUnitQuery), mark_); }

std::string MeasureMeter::Name() const { return mark_.id_number ? ZeroPadded(*mark_.id_number, 4) : ""; }

// The run goes on with all channels; why some of them stay silent stands in the main window's status line,
// which the cycles leave alone.
void MeasureMeter::TellUnknownChannels() {
  if (values_.ChannelMode > 0) return;
  app_.Status(app_.Text(text::kChannelsUnknown) + " " + app_.state.LastErrorText);
}

}  // namespace vlt
