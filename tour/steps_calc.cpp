// SPDX-License-Identifier: GPL-3.0-or-later
// Sensor spacing calculator: V and Z, metric and inch, values of the process page, the sheet in a file.
#include <QDir>
#include <QFile>
#include <QImage>

#include "desktop/qt_text.h"
#include "resources/text_ids.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kCalcWindow = "frmCalc";

void OpenCalc(Tour& tour) {
  tour.Operator().Menu("MDIForm1", "calcSensorSpacing");
  tour.Picture(kCalcWindow, "calc_empty");
}

struct Pipe {
  const char* diameter;
  const char* wall;
  int sensor;
  int mount;
};

void Calculate(Tour& tour, const Pipe& pipe, const std::string& spacing) {
  Hands& hands = tour.Operator();
  hands.Type(kCalcWindow, "OUTER_DIAMETERText", pipe.diameter);
  hands.Type(kCalcWindow, "WALL_THICKNESSText", pipe.wall);
  hands.Choose(kCalcWindow, "SENSOR_TYPECombo", pipe.sensor);
  hands.Choose(kCalcWindow, "SENSOR_MOUNTCombo", pipe.mount);
  hands.Click(kCalcWindow, "ExecuteCalc");
  tour.Expect("the spacing", hands.Text(kCalcWindow, "txtResult1Text"), spacing);
}

void MountV(Tour& tour) {
  Calculate(tour, {"100", "5", 4, 0}, "52.54");
  tour.Picture(kCalcWindow, "calc_v");
}

void MountZ(Tour& tour) {
  tour.Operator().Choose(kCalcWindow, "LINING_MATERIALCombo", 2);
  tour.Operator().Type(kCalcWindow, "LINING_THICKNESSText", "10");
  Calculate(tour, {"508", "9.52", 7, 1}, "247.71");
  tour.Picture(kCalcWindow, "calc_z");
  tour.Operator().Choose(kCalcWindow, "LINING_MATERIALCombo", 0);
}

void OnScale(Tour& tour) {
  Calculate(tour, {"60.5", "3.8", 2, 0}, "51");
  tour.Expect("the step", tour.Operator().Text(kCalcWindow, "txtResult2Text"), "17");
  tour.Picture(kCalcWindow, "calc_scale");
}

void Large(Tour& tour) {
  Calculate(tour, {"2000", "12.7", 8, 0}, "1,679.70");
  tour.Picture(kCalcWindow, "calc_large");
}

void Mistype(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kCalcWindow, "WALL_THICKNESSText", "120");
  tour.ClickAndAnswer(kCalcWindow, "ExecuteCalc", tour.Text(3921), true);
  tour.Expect("the spacing", hands.Text(kCalcWindow, "txtResult1Text"), "1,679.70");
  tour.Picture(kCalcWindow, "calc_outside");
  hands.Type(kCalcWindow, "WALL_THICKNESSText", "12.7");
}

// Takes the values, which replaces what was typed before.
void TakeOver(Tour& tour) { tour.ClickAndAnswer(kCalcWindow, "cmdTake", "", true); }

void TakePart(Tour& tour) {
  const Form& page = *tour.Running().Logic().windows.Find("Form10");
  auto& wall = dynamic_cast<TextBox&>(*page.Find("WALL_THICKNESSText"));
  auto& mount = dynamic_cast<ComboBox&>(*page.Find("SENSOR_MOUNTCombo"));
  const std::string thickness = wall.Text();
  const int mounted = mount.ListIndex();
  wall.SetText("");
  mount.SetListIndex(2);
  TakeOver(tour);
  tour.Expect("the wall", tour.Operator().Text(kCalcWindow, "WALL_THICKNESSText"), "");
  tour.Expect("the mount", tour.Operator().Text(kCalcWindow, "SENSOR_MOUNTCombo"), "");
  tour.Picture(kCalcWindow, "calc_taken_partly");
  wall.SetText(thickness);
  mount.SetListIndex(mounted);
  tour.Operator().Type(kCalcWindow, "WALL_THICKNESSText", "12.7");
}

void Take(Tour& tour) {
  Hands& hands = tour.Operator();
  const Form& page = *tour.Running().Logic().windows.Find("Form10");
  const auto& diameter = dynamic_cast<const TextBox&>(*page.Find("OUTER_DIAMETERText"));
  TakeOver(tour);
  tour.Expect("the process page's diameter", hands.Text(kCalcWindow, "OUTER_DIAMETERText"), diameter.Text());
  tour.Picture(kCalcWindow, "calc_taken");
  // What the page has not read of the pipe.
  for (const char* list : {"LINING_MATERIALCombo", "KIND_OF_FLUIDCombo", "SENSOR_MOUNTCombo"})
    hands.Choose(kCalcWindow, list, 0);
  hands.Choose(kCalcWindow, "SENSOR_TYPECombo", 4);
}

QString FileOf(Tour& tour, const char* name) {
  return QDir(ToQt(tour.Running().Logic().platform.process.ProgramFolder())).filePath(name);
}

void Save(Tour& tour) {
  for (const char* name : {"spacing.pdf", "spacing.png"}) {
    tour.Boxes().LayFile(FromQt(FileOf(tour, name)));
    tour.Operator().Click(kCalcWindow, "cmdSave");
  }
  QFile pdf(FileOf(tour, "spacing.pdf"));
  if (!pdf.open(QIODevice::ReadOnly) || !pdf.readAll().startsWith("%PDF")) throw Trouble("no PDF was saved");
  const QImage picture(FileOf(tour, "spacing.png"));
  if (picture.isNull()) throw Trouble("no picture was saved");
  tour.KeepImage(picture, "calc_sheet");
}

void Inch(Tour& tour) {
  SharedState& state = tour.Running().Logic().state;
  tour.Operator().Click(kCalcWindow, "cmdClose");
  state.UnitFlag = 1;
  tour.Operator().Menu("MDIForm1", "calcSensorSpacing");
  Calculate(tour, {"4.5", "0.237", 5, 0}, "3.281");
  tour.Picture(kCalcWindow, "calc_inch");
  state.UnitFlag = 0;
}

void CloseCalc(Tour& tour) {
  tour.Operator().Click(kCalcWindow, "cmdClose");
  if (tour.Running().Logic().windows.Find(kCalcWindow) != nullptr) throw Trouble("the calculator stays");
}

constexpr Step kCalcSteps[] = {
    {"the calculator opens", OpenCalc},
    {"spacing by the V method", MountV},
    {"spacing by the Z method through a lining", MountZ},
    {"spacing on the sensors' scale", OnScale},
    {"spacing on a large pipe", Large},
    {"a value outside of its range", Mistype},
    {"values of a process page that does not know all", TakePart},
    {"values of the process page", Take},
    {"the sheet is saved", Save},
    {"spacing in inches", Inch},
    {"the calculator closes", CloseCalc},
};

}  // namespace

std::span<const Step> CalcSteps() { return kCalcSteps; }

}  // namespace vlt::test
