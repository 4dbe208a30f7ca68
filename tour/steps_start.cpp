// SPDX-License-Identifier: GPL-3.0-or-later
// From the splash to the main window.
#include "shell/splash.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

void Choose(Tour& tour) {
  tour.Picture("frmMssg", "choice");
  tour.Operator().Click("frmMssg", "cmdLoader");
}

// The splash works in one handler from its first text to the main window, so it is watched meanwhile.
void Splash(Tour& tour) {
  if (!tour.Running().Start()) throw Trouble("the program does not start");
  if (tour.Running().Logic().state.UserInfo != "Standard") {
    tour.Meanwhile().When([&tour] { return tour.IsShown("frmMssg"); }, [&tour] { Choose(tour); });
  }
  const SplashVariant& variant = *FindSplashVariant(tour.Running().Logic().state.ModelCode);
  tour.Meanwhile().When(
      [&tour, &variant] {
        return tour.IsShown(variant.form) &&
               tour.Operator().Text(variant.form, "lblWarning") == "Loader Running...";
      },
      [&tour, &variant] { tour.Picture(variant.form, std::string("splash_") + variant.model_code); });
  tour.ExpectSoon("the splash", [&tour] { return tour.Meanwhile().AllDone(); });
}

void MainWindowOpens(Tour& tour) {
  tour.ExpectSoon("the main window", [&] {
    const Form* frame = tour.Running().Logic().windows.Find("MDIForm1");
    return frame != nullptr && frame->Visible();
  });
  Hands& hands = tour.Operator();
  tour.Expect("meter's language", hands.Panel("MDIForm1", "StatusBar1", 2), tour.Text(3890));
  tour.Expect("unit system", hands.Panel("MDIForm1", "StatusBar1", 3), tour.Text(2260));
  tour.Picture("MDIForm1", "main");
}

void About(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Menu("MDIForm1", "versionInfo");
  tour.Picture("frmAbout", "about");
  hands.Click("frmAbout", "cmdOK");
  tour.ExpectSoon("the end of the about window",
                  [&] { return tour.Running().Logic().windows.Find("frmAbout") == nullptr; });
}

bool IsGone(Tour& tour, const char* form) { return tour.Running().Logic().windows.Find(form) == nullptr; }

// A search on the line that the settings name, its meter taken over, and the link proved.
void SerialSettings(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "cmdLink");
  tour.Picture("FrmCSet", "serial_settings");
  hands.Click("FrmCSet", "cmdSearch");
  auto& form = *tour.Running().Logic().windows.Find("FrmCSet");
  auto& found = dynamic_cast<Grid&>(*form.Find("grdFound"));
  tour.ExpectSoon("a meter on the line",
                  [&] { return found.Rows() > 1 && hands.Enabled("FrmCSet", "Command1"); });
  hands.Window("FrmCSet").setFocus();
  found.Choose(1);
  tour.Picture("FrmCSet", "serial_settings_found");
  hands.Click("FrmCSet", "Command1");
  tour.ExpectSoon("the proof of the link", [&] { return IsGone(tour, "FrmCSet"); });
  tour.Expect("unit system", hands.Panel("MDIForm1", "StatusBar1", 3), tour.Text(2260));
}

// What the empty frame tells once the meter was asked.
void MeterFacts(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "cmdReadMeter");
  tour.ExpectSoon("the meter's paths",
                  [&] { return hands.Text("MDIForm1", "valFact(4)") == tour.Text(403); });
  tour.Picture("MDIForm1", "main_meter");
}

constexpr Step kStartSteps[] = {
    {"splash identifies the meter", Splash},
    {"main window opens", MainWindowOpens},
    {"about", About},
    {"serial settings find the meter", SerialSettings},
    {"empty frame tells about the meter", MeterFacts},
};

constexpr Step kSplashSteps[] = {{"splash identifies the meter", Splash},
                                 {"main window opens", MainWindowOpens}};

}  // namespace

std::span<const Step> StartSteps() { return kStartSteps; }
std::span<const Step> SplashSteps() { return kSplashSteps; }

}  // namespace vlt::test
