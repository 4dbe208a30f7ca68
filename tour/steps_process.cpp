// SPDX-License-Identifier: GPL-3.0-or-later
// Process setting: read the pipe, change it, set it, save it, adjust the zero; then the energy tab: read,
// cool instead of heat, and give a fixed return temperature.
#include <array>

#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kPage = "Form10";
constexpr const char* kDiameter = "OUTER_DIAMETERText";
constexpr std::array kPipe = {"OUTER_DIAMETER", "PIPE_MATERIAL", "WALL_THICKNESS", "SENSOR_SPACINGCheck"};

void Open(Tour& tour) {
  tour.Operator().Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page's buttons", [&] { return tour.Operator().Enabled(kPage, "ReadParameter"); });
  tour.Picture("MDIForm1", "process");
}

void ReadPipe(Tour& tour) {
  Hands& hands = tour.Operator();
  for (const char* box : kPipe) hands.Tick(kPage, box);
  hands.Click(kPage, "ReadParameter");
  tour.ExpectStatus(4021);
  for (const char* field : {kDiameter, "PIPE_MATERIALCombo", "WALL_THICKNESSText", "SENSOR_SPACINGText"}) {
    if (hands.Text(kPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
}

void Read(Tour& tour) {
  ReadPipe(tour);
  tour.Picture("MDIForm1", "process_read");
}

void Mistype(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kPage, kDiameter, "6o");
  tour.ClickAndAnswer(kPage, "SetParameter", tour.Text(3920), true);
  tour.Expect("mistyped text", hands.Text(kPage, kDiameter), "6o");
  if (tour.Running().Logic().state.UiLocked) throw Trouble("the press went on after the box");
}

void Set(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kPage, kDiameter, "60.5");  // a meter on a real line may hold what an earlier walk has set
  hands.Click(kPage, "SetParameter");
  tour.ExpectStatus(4001);
  const std::string spacing = hands.Text(kPage, "SENSOR_SPACINGText");
  hands.Type(kPage, kDiameter, "114.3");
  hands.Click(kPage, "SetParameter");
  tour.ExpectStatus(4001);
  tour.Expect("the meter's diameter", hands.Text(kPage, kDiameter), "114.30");
  if (hands.Text(kPage, "SENSOR_SPACINGText") == spacing) throw Trouble("the spacing does not follow");
  hands.Type(kPage, kDiameter, "1");
  hands.Click(kPage, "ReadParameter");
  tour.Expect("the diameter read again", hands.Text(kPage, kDiameter), "114.30");
  tour.Picture("MDIForm1", "process_set");
}

void Save(Tour& tour) {
  tour.Operator().Click(kPage, "SaveParameter");
  tour.ExpectStatus(4040);
}

void Zero(Tour& tour) {
  tour.Boxes().Lay(tour.Text(3963), true);
  tour.Boxes().Lay(tour.Text(760) + "  " + tour.Text(4141), true);
  tour.Operator().Click(kPage, "CmdBtnAdjust");
  tour.ExpectStatus(4001);
  tour.Boxes().Lay(tour.Text(3962), true);
  tour.Boxes().Lay(tour.Text(760) + "  " + tour.Text(4141), true);
  tour.Operator().Click(kPage, "CmdBtnClear");
  tour.ExpectStatus(4001);
  tour.ClickAndAnswer(kPage, "CmdBtnClear", tour.Text(3962), false);
}

constexpr const char* kTabs = "SetParameter2";
constexpr const char* kReturn = "SET_UP_RETURNER_TEMPERATUREText";

void ReadHeat(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.SelectTab(kPage, kTabs, 1);
  tour.Picture("MDIForm1", "energy");
  hands.Tick(kPage, "chkCheckHeat");
  hands.Click(kPage, "ReadParameterHeat");
  tour.ExpectStatus(4021);
  for (const char* field : {"TEMPERATURECombo", "HTEMPCONVText", "SUPPLY_TEMP_ZEROText"}) {
    if (hands.Text(kPage, field).empty()) throw Trouble(std::string("not read: ") + field);
  }
  if (hands.Enabled(kPage, "CTEMPCONVText")) throw Trouble("a plant that heats has a cooling coefficient");
  tour.Picture("MDIForm1", "energy_read");
}

void SetHeat(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Choose(kPage, "RUNCombo", 2);
  hands.Choose(kPage, "RETURNER_TEMPERATURECombo", 1);
  hands.Type(kPage, "SWITCH_TEMPERATUREText", "21.5");
  hands.Type(kPage, kReturn, "12.3");
  hands.Click(kPage, "SetParameterHeat");
  tour.ExpectStatus(4001);
  tour.Expect("the meter's return temperature", hands.Text(kPage, kReturn), "12.3");
  tour.Expect("the meter's change temperature", hands.Text(kPage, "SWITCH_TEMPERATUREText"), "21.5");
  tour.Picture("MDIForm1", "energy_set");
  hands.Choose(kPage, "RUNCombo", 1);
  hands.Choose(kPage, "RETURNER_TEMPERATURECombo", 0);
  hands.Click(kPage, "SetParameterHeat");
  tour.ExpectStatus(4001);
  hands.Tick(kPage, "chkCheckHeat", false);
  hands.SelectTab(kPage, kTabs, 0);
}

void HideAndShow(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command1");
  hands.Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page again", [&] { return hands.Enabled(kPage, "ReadParameter"); });
  tour.Expect("diameter after hiding", hands.Text(kPage, kDiameter), "114.30");
}

// For a walk that needs what the page holds and not the page.
void Visit(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command1");
  tour.ExpectSoon("the page's buttons", [&] { return hands.Enabled(kPage, "ReadParameter"); });
  ReadPipe(tour);
  hands.Click("MDIForm1", "Command1");
}

constexpr Step kSteps[] = {
    {"process setting opens", Open},
    {"the pipe is read", Read},
    {"a mistyped number keeps the focus", Mistype},
    {"the outer diameter is set", Set},
    {"saved into the meter", Save},
    {"zero set and cleared", Zero},
    {"the energy mode is read", ReadHeat},
    {"the energy mode is set", SetHeat},
    {"the page is hidden and shown", HideAndShow},
};

constexpr Step kPipeSteps[] = {{"the pipe is read", Visit}};

}  // namespace

std::span<const Step> ProcessSteps() { return kSteps; }
std::span<const Step> PipeSteps() { return kPipeSteps; }

}  // namespace vlt::test
