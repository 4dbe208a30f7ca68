// A page whose parameters belong to one of the three channels, in a unit that the operator chooses from a
// list: range and total.
#pragma once

#include "pages/parameter_page.h"

namespace vlt {

class ChannelPage : public ParameterPage {
 public:
  void Form_Activate() override;

  Label lblChannel{*this, "lblChannel"};
  ControlArray<OptionButton> ChannelSelect{*this, "ChannelSelect", Indexes(kChannels)};

  CheckBox chkCheck{*this, "chkCheck"};
  PushButton ReadParameter{*this, "ReadParameter"};
  PushButton SetParameter{*this, "SetParameter"};
  PushButton SaveParameter{*this, "SaveParameter"};

  // The unit of the channel's values, whatever the name says.
  CheckBox UNIT_SYSTEM{*this, "UNIT_SYSTEM"};
  ComboBox UNIT_SYSTEMCombo{*this, "UNIT_SYSTEMCombo"};
  // What the output does while the channel measures nothing, and after how long.
  CheckBox OUTPUT_BURNOUT{*this, "OUTPUT_BURNOUT"};
  ComboBox OUTPUT_BURNOUTCombo{*this, "OUTPUT_BURNOUTCombo"};
  CheckBox BURNOUT_TIMER{*this, "BURNOUT_TIMER"};
  TextBox BURNOUT_TIMERText{*this, "BURNOUT_TIMERText"};

 protected:
  // What tells one page from the other.
  struct Traits {
    const char* name;
    const char* section;  // of the parameter file
    int title;            // text ids, these and the next
    int set_started;
    int set_completed;
    int read_started;
    int read_completed;
    int SharedState::*channel;     // the chosen channel, kept between openings
    int SharedState::*unit_track;  // the UnitFlag that the unit list was last filled for
  };
  ChannelPage(App& app, const Traits& traits);

  // The chosen channel, 0 to 2.
  int Channel() const;
  bool ChannelIsChosen() override { return ChannelSelect(Channel()).Enabled(); }
  int ChannelBase() override;
  // Stores the choice. The captions kept for another channel's units are void then.
  void TakeChannel(int index);
  // Runs when an option is chosen by the operator or by the activation.
  virtual void ChannelSelect_Click(int index) = 0;

  // What the meter last told of its channels, a result of GetChannelConfig.
  int Config() const { return config_; }
  bool HasTwoPipes() const;
  // Asks it during an exchange, and in a lock of its own.
  void AskConfig();
  void AskConfigUnderLock();

  // Fills UNIT_SYSTEMCombo for the unit system in force.
  virtual void FillUnits() = 0;
  // The same, remembering for which it was.
  void LoadUnits();
  // Fills it anew. The choice stays where the new list has it; what the old list could not hold comes from
  // its slot.
  void RefillUnits();
  // True when the list was filled for another unit system.
  bool UnitsAreStale() const;

  // Title, channels, buttons and boxes in the language in force, and the units.
  void SetPageCaptions();

 private:
  Traits traits_;
  int config_ = -1;
};

}  // namespace vlt
