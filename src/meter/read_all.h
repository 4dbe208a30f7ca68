// SPDX-License-Identifier: GPL-3.0-or-later
// The read-out of all settings of a meter in one go.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "meter/register_image.h"
#include "state/app.h"
#include "state/device_facts.h"

namespace vlt {

// What a read-out takes in.
enum class ReadScope : std::uint8_t {
  kReport,  // what the report of all settings shows, in its exchanges
  kWhole,   // that and the maintenance page's settings, each block once, and none that the meter has no use
            // for
};

// Registers that were asked for and did not come.
struct UnreadBlock {
  RegisterSpan span;
  std::string reason;     // ExchangeReport::text, or empty for one that was not asked for any more
  std::string part = {};  // what the reader was reading: group and channel or output
};

// What the read-out has found.
struct MeterSettings {
  RegisterImage registers;
  std::vector<UnreadBlock> unread;
  // The facts that units, code tables and the shape of the meter follow: those that were known before, and in
  // their place what the read-out has brought.
  ToldFacts facts;
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
  SettingsReader(App& app, Listener listener, ReadScope scope = ReadScope::kReport);

  // Runs every reader. The port must be open and the interface locked. False when it was stopped.
  bool ReadAll();
  const MeterSettings& Settings() const { return settings_; }

 private:
  struct Step {
    // False when an exchange has failed.
    bool (SettingsReader::*read)(int index);
    int title;                            // text id
    Location location;                    // of which it reads one place after the other
    ReadScope from = ReadScope::kReport;  // the least that it takes part in
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
  bool ReadAllMaintenance(int);

  void Run(const Step& step);
  void Announce(const Step& step, int index);
  // How many places of a step the meter has; none of one that it has no use for.
  int PlacesOf(const Step& step) const;
  // One exchange for a block of the register map; ReadFrom takes it from `at`, where it answers too.
  bool Read(const Block& block, int index = 0);
  bool ReadFrom(int at, const Block& block, int index);
  // Of a whole read-out: true when the block was asked for before, and then whether it came.
  bool WasAsked(const RegisterSpan& span, bool& came) const;
  bool IsWhole() const { return scope_ == ReadScope::kWhole; }
  bool IsSingle() const;
  // The meter of this read-out has no registers of the heat calculation.
  bool NoHeatFunction() const { return LacksHeatRegisters(settings_.facts); }
  bool HasThermal() const;

  App& app_;
  Listener listener_;
  ReadScope scope_;
  MeterSettings settings_;
  std::vector<RegisterSpan> asked_;
  int number_ = 0;    // of the running reader
  std::string part_;  // what it reads
  bool stopped_ = false;
};

}  // namespace vlt
