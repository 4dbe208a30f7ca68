// SPDX-License-Identifier: GPL-3.0-or-later
// Process setting: read the pipe, change it, set it, save it, adjust the zero; then the energy tab: read,
// cool instead of heat, and give a fixed return temperature.
#include <array>

#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kProcessPage = "Form10";
constexpr const char* kDiameter = "OUTER_DIAMETERText";
constexpr std::array kPipe = {"OUTER_DIAMETER", "PIPE_MATERIAL", "WALL_THICKNESS", "SENSOR_SPACINGCheck"};

void OpenProcess(Tour& tour) {
  tour.Operator().Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page's buttons",
                  [&] { return tour.Operator().Enabled(kProcessPage, "ReadParameter"); });
  tour.Picture("MDIForm1", "process");
}

void ReadPipe(Tour& tour) {
  Hands& hands = tour.Operator();
  for (const char* box : kPipe) hands.Tick(kProcessPage, box);
  hands.Click(kProcessPage, "ReadParameter");
  tour.ExpectStatus(4021);
  for (const char* field : {kDiameter, "PIPE_MATERIALCombo", "WALL_THICKNESSText", "SENSOR_SPACINGText"}) {
    if (hands.Text(kProcessPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
}

void Read(Tour& tour) {
  ReadPipe(tour);
  tour.Picture("MDIForm1", "process_read");
}

void MistypeDiameter(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kProcessPage, kDiameter, "6o");
  tour.ClickAndAnswer(kProcessPage, "SetParameter", tour.Text(3920), true);
  tour.Expect("mistyped text", hands.Text(kProcessPage, kDiameter), "6o");
  if (tour.Running().Logic().state.UiLocked) throw Trouble("the press went on after the box");
}

void Set(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kProcessPage, kDiameter,
             "60.5");  // a meter on a real line may hold what an earlier walk has set
  hands.Click(kProcessPage, "SetParameter");
  tour.ExpectStatus(4001);
  const std::string spacing = hands.Text(kProcessPage, "SENSOR_SPACINGText");
  hands.Type(kProcessPage, kDiameter, "114.3");
  hands.Click(kProcessPage, "SetParameter");
  tour.ExpectStatus(4001);
  tour.Expect("the meter's diameter", hands.Text(kProcessPage, kDiameter), "114.30");
  if (hands.Text(kProcessPage, "SENSOR_SPACINGText") == spacing) throw Trouble("the spacing does not follow");
  hands.Type(kProcessPage, kDiameter, "1");
  hands.Click(kProcessPage, "ReadParameter");
  tour.Expect("the diameter read again", hands.Text(kProcessPage, kDiameter), "114.30");
  tour.Picture("MDIForm1", "process_set");
}

void SaveProcess(Tour& tour) {
  tour.Operator().Click(kProcessPage, "SaveParameter");
  tour.ExpectStatus(4040);
}

void Zero(Tour& tour) {
  tour.Boxes().Lay(tour.Text(3963), true);
  tour.Boxes().Lay(tour.Text(760) + "  " + tour.Text(4141), true);
  tour.Operator().Click(kProcessPage, "CmdBtnAdjust");
  tour.ExpectStatus(4001);
  tour.Boxes().Lay(tour.Text(3962), true);
  tour.Boxes().Lay(tour.Text(760) + "  " + tour.Text(4141), true);
  tour.Operator().Click(kProcessPage, "CmdBtnClear");
  tour.ExpectStatus(4001);
  tour.ClickAndAnswer(kProcessPage, "CmdBtnClear", tour.Text(3962), false);
}

constexpr const char* kTabs = "SetParameter2";
constexpr const char* kReturn = "SET_UP_RETURNER_TEMPERATUREText";

void ReadHeat(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.SelectTab(kProcessPage, kTabs, 1);
  tour.Picture("MDIForm1", "energy");
  hands.Tick(kProcessPage, "chkCheckHeat");
  hands.Click(kProcessPage, "ReadParameterHeat");
  tour.ExpectStatus(4021);
  for (const char* field : {"TEMPERATURECombo", "HTEMPCONVText", "SUPPLY_TEMP_ZEROText"}) {
    if (hands.Text(kProcessPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
  if (hands.Enabled(kProcessPage, "CTEMPCONVText"))
    throw Trouble("a plant that heats has a cooling coefficient");
  tour.Picture("MDIForm1", "energy_read");
}

void SetHeat(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Choose(kProcessPage, "RUNCombo", 2);
  hands.Choose(kProcessPage, "RETURNER_TEMPERATURECombo", 1);
  hands.Type(kProcessPage, "SWITCH_TEMPERATUREText", "21.5");
  hands.Type(kProcessPage, kReturn, "12.3");
  hands.Click(kProcessPage, "SetParameterHeat");
  tour.ExpectStatus(4001);
  tour.Expect("the meter's return temperature", hands.Text(kProcessPage, kReturn), "12.3");
  tour.Expect("the meter's change temperature", hands.Text(kProcessPage, "SWITCH_TEMPERATUREText"), "21.5");
  tour.Picture("MDIForm1", "energy_set");
  hands.Choose(kProcessPage, "RUNCombo", 1);
  hands.Choose(kProcessPage, "RETURNER_TEMPERATURECombo", 0);
  hands.Click(kProcessPage, "SetParameterHeat");
  tour.ExpectStatus(4001);
  hands.Tick(kProcessPage, "chkCheckHeat", false);
  hands.SelectTab(kProcessPage, kTabs, 0);
}

void HideAndShow(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command1");
  hands.Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page again", [&] { return hands.Enabled(kProcessPage, "ReadParameter"); });
  tour.Expect("diameter after hiding", hands.Text(kProcessPage, kDiameter), "114.30");
}

// For a walk that needs what the page holds and not the page.
void Visit(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page's buttons", [&] { return hands.Enabled(kProcessPage, "ReadParameter"); });
  ReadPipe(tour);
  hands.Click("MDIForm1", "Command1");
}

constexpr Step kProcessSteps[] = {
    {"process setting opens", OpenProcess},
    {"the pipe is read", Read},
    {"a mistyped number keeps the focus", MistypeDiameter},
    {"the outer diameter is set", Set},
    {"saved into the meter", SaveProcess},
    {"zero set and cleared", Zero},
    {"the energy mode is read", ReadHeat},
    {"the energy mode is set", SetHeat},
    {"the page is hidden and shown", HideAndShow},
};

constexpr Step kPipeSteps[] = {{"the pipe is read", Visit}};

}  // namespace

std::span<const Step> ProcessSteps() { return kProcessSteps; }
std::span<const Step> PipeSteps() { return kPipeSteps; }

}  // namespace vlt::test
