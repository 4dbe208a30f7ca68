// SPDX-License-Identifier: GPL-3.0-or-later
// The meter of a run of the measure page: its channels and units, asked ahead of the first cycle, and what
// tells it from another one.
#pragma once

#include <string>

#include "live/live_run.h"
#include "live/measure_values.h"
#include "meter/meter_mark.h"

namespace vlt {

class MeasureMeter {
 public:
  // `run` says whether the next exchange is still wanted.
  MeasureMeter(App& app, MeasureValues& values, const LiveRun& run);

  // Asks for channels, units and ID number; `values` learns which channels and blocks there are. False when
  // the run is to end.
  bool Ask();
  // Asks for the ID number again while it is not known, a few times at most. Without an answer it is left for
  // a later good cycle.
  void Learn();
  // Whether the meter that answers now is the one of this run.
  MeterAnswer Prove();
  // The ID number; empty while it is not known.
  std::string Name() const;

 private:
  void TellUnknownChannels();

  App& app_;
  MeasureValues& values_;
  const LiveRun& run_;
  MeterMark mark_;
  int name_questions_ = 0;  // that are left while its ID number is not known
};

}  // namespace vlt
