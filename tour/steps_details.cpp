// SPDX-License-Identifier: GPL-3.0-or-later
// Transit time: the details of a path are read, the trigger is taken over by hand and given back.
#include <string>

#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kPage = "Form11";
constexpr const char* kLevel = "TriggerLevelInput";

void Open(Tour& tour) {
  tour.Operator().Click("MDIForm1", "Command9");
  tour.ExpectSoon("the page's buttons", [&] { return tour.Operator().Enabled(kPage, "ReadParameter"); });
  tour.Picture("MDIForm1", "details");
}

void Read(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Tick(kPage, "chkCheck");
  hands.Click(kPage, "ReadParameter");
  tour.ExpectStatus(4020);
  for (const char* field : {"SendCountCombo", "MeasureMethodCombo", "ReceivePeakCombo", kLevel}) {
    if (hands.Text(kPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
  if (hands.Enabled(kPage, kLevel)) throw Trouble("a level that the meter finds by itself can be typed");
  tour.Picture("MDIForm1", "details_read");
}

void TakeOver(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click(kPage, "TriggerLevelCtlManualOption");
  hands.Type(kPage, kLevel, "44");
  hands.Click(kPage, "SetParameter");
  tour.ExpectStatus(4000);
  tour.Expect("the meter's trigger level", hands.Text(kPage, kLevel), "44");
  tour.Picture("MDIForm1", "details_by_hand");
  hands.Click(kPage, "TriggerLevelCtlAutoOption");
  hands.Click(kPage, "SetParameter");
  tour.ExpectStatus(4000);
  if (hands.Enabled(kPage, kLevel)) throw Trouble("the trigger level is still given by hand");
  hands.Tick(kPage, "chkCheck", false);
}

constexpr Step kSteps[] = {
    {"transit time opens", Open},
    {"the details are read", Read},
    {"the trigger is set by hand and given back", TakeOver},
};

}  // namespace

std::span<const Step> DetailSteps() { return kSteps; }

}  // namespace vlt::test
