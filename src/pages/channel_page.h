// SPDX-License-Identifier: GPL-3.0-or-later
// A page whose parameters belong to one of the three channels, in a unit that the operator chooses from a
// list: range and total.
#pragma once

#include "meter/quiet_query.h"
#include "pages/chooser.h"
#include "pages/parameter_page.h"

namespace vlt {

class ChannelPage : public ParameterPage {
 public:
  void Form_Activate() override;
  bool IsChoice(const Control& control) const override { return chooser_.Has(control); }

  Label lblChannel{*this, "lblChannel"};
  ControlArray<OptionButton> ChannelSelect{*this, "ChannelSelect", Indexes(kChannels)};

  // The unit of the channel's values, whatever the name says.
  ListEntry UNIT_SYSTEMCombo;
  // What the output does while the channel measures nothing, and after how long.
  ListEntry OUTPUT_BURNOUTCombo;
  NumberEntry BURNOUT_TIMERText;

 protected:
  // What tells one page from the other.
  struct Traits {
    const char* name;
    Texts texts;
    const Parameter* unit;
    const Parameter* burnout;
    const Parameter* burnout_timer;
    int SharedState::*channel;     // the chosen channel, kept between openings
    int SharedState::*unit_track;  // the UnitFlag that the unit list was last filled for
  };
  ChannelPage(App& app, const Traits& traits);

  // The chosen channel, 0 to 2.
  int Channel() const { return chooser_.Index(); }
  int IndexOf(Location) override { return Channel(); }
  bool ChannelIsChosen() override { return chooser_.IsEnabled(); }
  // Stores the choice. The captions kept for another channel's units are void then.
  void TakeChannel(int index);
  // Runs when an option is chosen by the operator or by the activation.
  virtual void ChannelSelect_Click(int index) = 0;

  // What the meter last told of its channels.
  ChannelConfig Config() const { return config_; }
  bool HasTwoPipes() const { return config_ == ChannelConfig::kTwoPipes; }
  // Asks it during an exchange, and in a lock of its own.
  void AskConfig() { config_ = AskChannelConfig(app()); }
  void AskConfigUnderLock() { config_ = AskChannelConfig(app(), *this); }

  // Fills UNIT_SYSTEMCombo for the unit system in force.
  virtual void FillUnits() = 0;
  // The same, remembering for which it was.
  void LoadUnits();
  // Fills it anew. The choice stays where the new list has it; what the old list could not hold comes from
  // its slot.
  void RefillUnits();
  // True when the list was filled for another unit system.
  bool UnitsAreStale() const;

  void SetChannelCaptions(std::vector<CaptionRow> own);

 private:
  Traits traits_;
  Chooser chooser_;
  ChannelConfig config_ = ChannelConfig::kUnknown;
};

}  // namespace vlt
