// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/channel_page.h"

namespace vlt {

ChannelPage::ChannelPage(App& app, const Traits& traits)
    : ParameterPage(app, traits.name, traits.texts),
      UNIT_SYSTEMCombo(*this, fields_, *traits.unit, "UNIT_SYSTEM", "UNIT_SYSTEMCombo"),
      OUTPUT_BURNOUTCombo(*this, fields_, *traits.burnout, "OUTPUT_BURNOUT", "OUTPUT_BURNOUTCombo"),
      BURNOUT_TIMERText(*this, fields_, *traits.burnout_timer, "BURNOUT_TIMER", "BURNOUT_TIMERText",
                        LabelName{"Label3", 0}),
      traits_(traits),
      chooser_(app, ChannelSelect, traits.channel, [this](int index) { ChannelSelect_Click(index); }) {}

void ChannelPage::TakeChannel(int index) {
  if (!chooser_.Take(index)) return;
  column().ForgetUnitCaptions();
  column().ShowHints();
}

void ChannelPage::Form_Activate() {
  chooser_.Show();
  AskConfigUnderLock();
  chooser_.EnableAll(HasTwoPipes());
  if (UnitsAreStale()) {
    RefillUnits();
    column().ShowUnits();
    BoxClicked(UNIT_SYSTEMCombo.box);
  }
  // Behind the lock, which releases every button; and kept captions win over the units in force.
  ParameterPage::Form_Activate();
}

bool ChannelPage::UnitsAreStale() const { return app().state.*traits_.unit_track != app().state.UnitFlag; }

void ChannelPage::LoadUnits() {
  FillUnits();
  app().state.*traits_.unit_track = app().state.UnitFlag;
}

void ChannelPage::RefillUnits() {
  const bool chosen = UNIT_SYSTEMCombo.ListIndex() >= 0;
  LoadUnits();
  if (!chosen) column().RestoreEntry(column().FieldOf(UNIT_SYSTEMCombo));
}

void ChannelPage::SetChannelCaptions(std::vector<CaptionRow> own) {
  own.insert(
      own.end(),
      {{&lblChannel, 179}, {&ChannelSelect(0), 182}, {&ChannelSelect(1), 183}, {&ChannelSelect(2), 184}});
  SetPageCaptions(own);
}

}  // namespace vlt
