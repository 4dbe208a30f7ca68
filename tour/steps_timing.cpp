// SPDX-License-Identifier: GPL-3.0-or-later
// Event-driven timing: chosen, proved with the link, worked with, and found again.
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kDialog = "FrmCSet";
constexpr const char* kTimingPage = "Form10";
constexpr int kReadEnded = 4021;

void OpenSettings(Tour& tour) {
  tour.ExpectSoon("the main window", [&] {
    const Form* frame = tour.Running().Logic().windows.Find("MDIForm1");
    return frame != nullptr && frame->Visible();
  });
  tour.Operator().Click("MDIForm1", "cmdLink");
}

void ChooseTiming(Tour& tour) {
  Hands& hands = tour.Operator();
  OpenSettings(tour);
  hands.Tick(kDialog, "chkTiming");
  tour.Picture(kDialog, "event_timing");
  hands.Click(kDialog, "Command1");
  tour.ExpectSoon("the proof of the link",
                  [&] { return tour.Running().Logic().windows.Find(kDialog) == nullptr; });
}

void ReadPage(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page's buttons", [&] { return hands.Enabled(kTimingPage, "ReadParameter"); });
  hands.Tick(kTimingPage, "OUTER_DIAMETER");
  hands.Click(kTimingPage, "ReadParameter");
  tour.ExpectStatus(kReadEnded);
}

void FindAgain(Tour& tour) {
  Hands& hands = tour.Operator();
  OpenSettings(tour);
  if (!hands.Ticked(kDialog, "chkTiming")) throw Trouble("the timing was not kept");
  hands.Click(kDialog, "Command2");
}

constexpr Step kTimingSteps[] = {{"event-driven timing is chosen", ChooseTiming},
                                 {"a page is read by it", ReadPage},
                                 {"the settings show it", FindAgain}};

}  // namespace

std::span<const Step> TimingSteps() { return kTimingSteps; }

}  // namespace vlt::test
