#include "pages/channel_page.h"

#include "link/device_queries.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kBases[kChannels] = {0x0000, 0x1388, 0x1B58};
constexpr int kTwoPipes = 3;  // of GetChannelConfig

}  // namespace

ChannelPage::ChannelPage(App& app, const Traits& traits)
    : ParameterPage(app, traits.name,
                    {chkCheck, ReadParameter, SetParameter, SaveParameter, traits.section, traits.set_started,
                     traits.set_completed, traits.read_started, traits.read_completed}),
      traits_(traits) {
  ChannelSelect.ForEach([this](OptionButton& option) {
    option.on_click = [this, &option] {
      if (!this->app().state.UiLocked) return ChannelSelect_Click(option.Index());
      // A running exchange goes on with the channel that it began with.
      ChannelSelect(Channel()).SetValue(true);
    };
  });
}

int ChannelPage::Channel() const {
  const int channel = app().state.*traits_.channel;
  return channel > 0 && channel < kChannels ? channel : 0;
}

int ChannelPage::ChannelBase() { return kBases[Channel()]; }

void ChannelPage::TakeChannel(int index) {
  if (index != Channel()) ForgetUnitCaptions();
  app().state.*traits_.channel = index;
}

bool ChannelPage::HasTwoPipes() const { return config_ == kTwoPipes; }

void ChannelPage::AskConfig() { config_ = GetChannelConfig(app()); }

void ChannelPage::AskConfigUnderLock() { config_ = AskChannelConfig(app(), *this); }

void ChannelPage::Form_Activate() {
  ChannelSelect(Channel()).SetValue(true);
  AskConfigUnderLock();
  ChannelSelect.ForEach(
      [this](OptionButton& option) { option.SetEnabled(option.Index() == 0 || HasTwoPipes()); });
  if (UnitsAreStale()) {
    RefillUnits();
    ShowUnits();
    UNIT_SYSTEM.on_click();
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
  const int index = UNIT_SYSTEMCombo.ListIndex();
  LoadUnits();
  if (index >= 0) {
    UNIT_SYSTEMCombo.SetListIndex(index);
  } else {
    RestoreEntry(FieldOf(UNIT_SYSTEMCombo));
  }
}

void ChannelPage::SetPageCaptions() {
  SetCaption(app().Text(traits_.title));
  SetCaptions({{&lblChannel, 179},
               {&ChannelSelect(0), 182},
               {&ChannelSelect(1), 183},
               {&ChannelSelect(2), 184},
               {&ReadParameter, 2030},
               {&SetParameter, 1650},
               {&SaveParameter, 2140},
               {&chkCheck, text::kSelectAll}});
  ShowNames();
  BuildBaseUnitNames(app());
  ShowUnits();
}

}  // namespace vlt
