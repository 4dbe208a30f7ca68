// SPDX-License-Identifier: GPL-3.0-or-later
// Transit time: the condition of the paths, and each kind of wave captured, stopped and saved.
#include <QDir>
#include <QFile>

#include "desktop/qt_text.h"
#include "live/wave_tab.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kTransitPage = "Form11";
constexpr int kConditionRead = 4029;
constexpr int kRunEnded = 4690;

WaveTab& Waves(Tour& tour) { return *tour.Running().Logic().windows.Find(kTransitPage)->Part<WaveTab>(); }

std::string Panel(Tour& tour, int number) {
  return tour.Operator().Panel(kTransitPage, "StatusBar2", number);
}

// A method that filters and correlates, set on the details' tab.
void Method(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command9");
  tour.ExpectSoon("the page's buttons", [&] { return hands.Enabled(kTransitPage, "ReadParameter"); });
  hands.Tick(kTransitPage, "MeasureMethodCheck");
  hands.Choose(kTransitPage, "MeasureMethodCombo", 1);
  hands.Click(kTransitPage, "SetParameter");
  tour.ExpectStatus(4000);
}

void Condition(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.SelectTab(kTransitPage, "DetailTabs", 1);
  tour.ClickAndAnswer(kTransitPage, "SaveInfButton", tour.Text(3540) + tour.Text(3130), true);
  hands.Click(kTransitPage, "ReadInfButton");
  tour.ExpectSoon("the condition",
                  [&] { return Panel(tour, 1).find(tour.Text(kConditionRead)) != std::string::npos; });
  tour.Picture("MDIForm1", "Form11_condition");
}

void Kind(Tour& tour, const char* option) {
  Hands& hands = tour.Operator();
  hands.Click(kTransitPage, option);
  bool pictured = false;
  tour.Meanwhile().When([&] { return Waves(tour).Captures >= 2 && Waves(tour).prgWave.Value() > 8; },
                        [&] {
                          pictured = true;
                          tour.Picture("MDIForm1", std::string("Form11_") + option);
                          hands.Click(kTransitPage, "ProfileStopButton");
                        });
  hands.Click(kTransitPage, "ProfileStartButton");
  tour.ExpectSoon("the end of the captures",
                  [&] { return hands.Enabled(kTransitPage, "ProfileStartButton"); });
  if (!pictured) throw Trouble(Panel(tour, 1));
  if (Panel(tour, 1).find(tour.Text(kRunEnded)) == std::string::npos) throw Trouble(Panel(tour, 1));
}

void Capture(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.SelectTab(kTransitPage, "DetailTabs", 2);
  for (const char* option : {"ForwardReceiveOption", "ReverseReceiveOption", "ForwardFilterOption",
                             "ReverseFilterOption", "CorrelationCalOption"}) {
    Kind(tour, option);
  }
  tour.Picture("MDIForm1", "Form11_waves_stopped");
}

void Save(Tour& tour) {
  const QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  tour.Boxes().LayFile(FromQt(folder.filePath("wave.csv")));
  tour.Operator().Click(kTransitPage, "ProfileSaveButton");
  QFile file(folder.filePath("wave.csv"));
  if (!file.open(QIODevice::ReadOnly)) throw Trouble("the waves can't be read");
  if (file.readAll().count('\n') != 1028) throw Trouble("the waves are not whole");
  tour.Operator().Click("MDIForm1", "Command9");
}

constexpr Step kTransitSteps[] = {{"a method with all kinds of wave is set", Method},
                                  {"condition is read", Condition},
                                  {"waves are captured", Capture},
                                  {"waves are saved", Save}};

}  // namespace

std::span<const Step> TransitSteps() { return kTransitSteps; }

}  // namespace vlt::test
