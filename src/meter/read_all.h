// SPDX-License-Identifier: GPL-3.0-or-later
// The read-out of all settings of a meter in one go.
#pragma once

#include <functional>
#include <string>

#include "meter/register_image.h"
#include "state/app.h"

namespace vlt {

// What the read-out has found.
struct MeterSettings {
  RegisterImage registers;
  // The facts that units, code tables and the shape of the meter follow: those that were known before, and in
  // their place what the read-out has brought.
  SharedState facts;
  // The model has no heat calculation.
  bool NoHeatFunction = false;
};

class SettingsReader {
 public:
  // What its owner is told and asked meanwhile.
  struct Listener {
    // Reader `number` of `count` begins; `what` names the group and channel or output.
    std::function<void(int number, int count, const std::string& what)> began;
    // A reader has failed, for one of its places or for all; the read-out goes on behind it.
    std::function<void()> failed;
    // True ends the read-out before its next exchange.
    std::function<bool()> stop;
  };
  SettingsReader(App& app, Listener listener);

  // Runs every reader. The port must be open and the interface locked. False when it was stopped.
  bool ReadAll();
  const MeterSettings& Settings() const { return settings_; }

 private:
  struct Step {
    // False when an exchange has failed.
    bool (SettingsReader::*read)(int index);
    int title;          // text id
    Location location;  // of which it reads one place after the other
  };
  static const Step kSteps[];

  bool ReadAllSystem(int);
  bool ReadAllProcess(int channel);
  bool ReadAllHeat(int);
  bool ReadAllRange(int channel);
  bool ReadAllTotal(int channel);
  bool ReadAllStatus(int output);
  bool ReadAllDetails(int channel);
  bool ReadAllDisplay(int);

  void Run(const Step& step);
  void Announce(const Step& step, int index);
  // How many places of a step the meter has; none of one that it has no use for.
  int PlacesOf(const Step& step) const;
  // One exchange for a block of the register map; ReadFrom takes it from `at`, where it answers too.
  bool Read(const Block& block, int index = 0);
  bool ReadFrom(int at, const Block& block, int index);
  void LearnDevice();
  void LearnHeat();
  bool IsSingle() const;

  App& app_;
  Listener listener_;
  MeterSettings settings_;
  int number_ = 0;  // of the running reader
  bool stopped_ = false;
};

}  // namespace vlt
