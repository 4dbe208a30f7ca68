// SPDX-License-Identifier: GPL-3.0-or-later
// Transit time: the details of a path are read, the trigger is taken over by hand and given back.
#include <string>

#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kDetailsPage = "Form11";
constexpr const char* kLevel = "TriggerLevelInput";

void OpenDetails(Tour& tour) {
  tour.Operator().Click("MDIForm1", "Command9");
  tour.ExpectSoon("the page's buttons",
                  [&] { return tour.Operator().Enabled(kDetailsPage, "ReadParameter"); });
  tour.Picture("MDIForm1", "details");
}

void Read(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Tick(kDetailsPage, "chkCheck");
  hands.Click(kDetailsPage, "ReadParameter");
  tour.ExpectStatus(4020);
  for (const char* field : {"SendCountCombo", "MeasureMethodCombo", "ReceivePeakCombo", kLevel}) {
    if (hands.Text(kDetailsPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
  if (hands.Enabled(kDetailsPage, kLevel))
    throw Trouble("a level that the meter finds by itself can be typed");
  tour.Picture("MDIForm1", "details_read");
}

void TakeOver(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click(kDetailsPage, "TriggerLevelCtlManualOption");
  hands.Type(kDetailsPage, kLevel, "44");
  hands.Click(kDetailsPage, "SetParameter");
  tour.ExpectStatus(4000);
  tour.Expect("the meter's trigger level", hands.Text(kDetailsPage, kLevel), "44");
  tour.Picture("MDIForm1", "details_by_hand");
  hands.Click(kDetailsPage, "TriggerLevelCtlAutoOption");
  hands.Click(kDetailsPage, "SetParameter");
  tour.ExpectStatus(4000);
  if (hands.Enabled(kDetailsPage, kLevel)) throw Trouble("the trigger level is still given by hand");
  hands.Tick(kDetailsPage, "chkCheck", false);
}

constexpr Step kDetailSteps[] = {
    {"transit time opens", OpenDetails},
    {"the details are read", Read},
    {"the trigger is set by hand and given back", TakeOver},
};

}  // namespace

std::span<const Step> DetailSteps() { return kDetailSteps; }

}  // namespace vlt::test
