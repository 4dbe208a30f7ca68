// SPDX-License-Identifier: GPL-3.0-or-later
// What the measure page draws and how: the scale of its trend as entered, and the lists of channel and
// quantity.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "live/measure_controls.h"
#include "live/measure_values.h"
#include "live/trend.h"

namespace vlt {

class MeasureScale {
 public:
  MeasureScale(App& app, MeasureControls& page, MeasureValues& values, Trend& trend);

  // The entries as they are at first.
  void Reset();
  // The entries to the shared state, where they outlive the page, and back; an empty kept one leaves what the
  // page shows.
  void Keep();
  void Restore();
  // From here on what is typed is kept at once: the settings file is written while the page is still open.
  void KeepAsTyped();
  // False when an entry is out of its limits; a box has said so.
  bool Check();
  void Enable(bool enabled);
  // Seconds between two cycles, as entered.
  int EnteredCycle() const;
  // An empty chart of the entered scale.
  void PrepareTrend();

  // The lists in the language in force, and filled anew with what the channels in use have.
  void NameLists();
  void FillChannelList();

  std::array<std::string, kChannels> ChannelNames;
  std::array<std::string, 3> QuantityNames;  // flow rate, velocity, flow rate in %

 private:
  struct Scale;
  std::vector<Scale> Scales() const;
  bool CheckScale(const Scale& scale);
  void FillQuantityList();
  void CH_Combo_Click();

  App& app_;
  MeasureControls& page_;
  MeasureValues& values_;
  Trend& trend_;
};

}  // namespace vlt
