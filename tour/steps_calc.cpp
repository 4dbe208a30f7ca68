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

constexpr const char* kWindow = "frmCalc";

void Open(Tour& tour) {
  tour.Operator().Menu("MDIForm1", "calcSensorSpacing");
  tour.Picture(kWindow, "calc_empty");
}

struct Pipe {
  const char* diameter;
  const char* wall;
  int sensor;
  int mount;
};

void Calculate(Tour& tour, const Pipe& pipe, const std::string& spacing) {
  Hands& hands = tour.Operator();
  hands.Type(kWindow, "OUTER_DIAMETERText", pipe.diameter);
  hands.Type(kWindow, "WALL_THICKNESSText", pipe.wall);
  hands.Choose(kWindow, "SENSOR_TYPECombo", pipe.sensor);
  hands.Choose(kWindow, "SENSOR_MOUNTCombo", pipe.mount);
  hands.Click(kWindow, "ExecuteCalc");
  tour.Expect("the spacing", hands.Text(kWindow, "txtResult1Text"), spacing);
}

void MountV(Tour& tour) {
  Calculate(tour, {"100", "5", 4, 0}, "52.54");
  tour.Picture(kWindow, "calc_v");
}

void MountZ(Tour& tour) {
  tour.Operator().Choose(kWindow, "LINING_MATERIALCombo", 2);
  tour.Operator().Type(kWindow, "LINING_THICKNESSText", "10");
  Calculate(tour, {"508", "9.52", 7, 1}, "247.71");
  tour.Picture(kWindow, "calc_z");
  tour.Operator().Choose(kWindow, "LINING_MATERIALCombo", 0);
}

void OnScale(Tour& tour) {
  Calculate(tour, {"60.5", "3.8", 2, 0}, "51");
  tour.Expect("the step", tour.Operator().Text(kWindow, "txtResult2Text"), "17");
  tour.Picture(kWindow, "calc_scale");
}

void Large(Tour& tour) {
  Calculate(tour, {"2000", "12.7", 8, 0}, "1,679.70");
  tour.Picture(kWindow, "calc_large");
}

void Mistype(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kWindow, "WALL_THICKNESSText", "120");
  tour.ClickAndAnswer(kWindow, "ExecuteCalc", tour.Text(3921), true);
  tour.Expect("the spacing", hands.Text(kWindow, "txtResult1Text"), "1,679.70");
  tour.Picture(kWindow, "calc_outside");
  hands.Type(kWindow, "WALL_THICKNESSText", "12.7");
}

// Takes the values, which replaces what was typed before.
void TakeOver(Tour& tour) { tour.ClickAndAnswer(kWindow, "cmdTake", "", true); }

void TakePart(Tour& tour) {
  const Form& page = *tour.Running().Logic().windows.Find("Form10");
  auto& wall = dynamic_cast<TextBox&>(*page.Find("WALL_THICKNESSText"));
  auto& mount = dynamic_cast<ComboBox&>(*page.Find("SENSOR_MOUNTCombo"));
  const std::string thickness = wall.Text();
  const int mounted = mount.ListIndex();
  wall.SetText("");
  mount.SetListIndex(2);
  TakeOver(tour);
  tour.Expect("the wall", tour.Operator().Text(kWindow, "WALL_THICKNESSText"), "");
  tour.Expect("the mount", tour.Operator().Text(kWindow, "SENSOR_MOUNTCombo"), "");
  tour.Picture(kWindow, "calc_taken_partly");
  wall.SetText(thickness);
  mount.SetListIndex(mounted);
  tour.Operator().Type(kWindow, "WALL_THICKNESSText", "12.7");
}

void Take(Tour& tour) {
  Hands& hands = tour.Operator();
  const Form& page = *tour.Running().Logic().windows.Find("Form10");
  const auto& diameter = dynamic_cast<const TextBox&>(*page.Find("OUTER_DIAMETERText"));
  TakeOver(tour);
  tour.Expect("the process page's diameter", hands.Text(kWindow, "OUTER_DIAMETERText"), diameter.Text());
  tour.Picture(kWindow, "calc_taken");
  // What the page has not read of the pipe.
  for (const char* list : {"LINING_MATERIALCombo", "KIND_OF_FLUIDCombo", "SENSOR_MOUNTCombo"})
    hands.Choose(kWindow, list, 0);
  hands.Choose(kWindow, "SENSOR_TYPECombo", 4);
}

QString FileOf(Tour& tour, const char* name) {
  return QDir(ToQt(tour.Running().Logic().platform.process.ProgramFolder())).filePath(name);
}

void Save(Tour& tour) {
  for (const char* name : {"spacing.pdf", "spacing.png"}) {
    tour.Boxes().LayFile(FromQt(FileOf(tour, name)));
    tour.Operator().Click(kWindow, "cmdSave");
  }
  QFile pdf(FileOf(tour, "spacing.pdf"));
  if (!pdf.open(QIODevice::ReadOnly) || !pdf.readAll().startsWith("%PDF")) throw Trouble("no PDF was saved");
  const QImage picture(FileOf(tour, "spacing.png"));
  if (picture.isNull()) throw Trouble("no picture was saved");
  tour.KeepImage(picture, "calc_sheet");
}

void Inch(Tour& tour) {
  SharedState& state = tour.Running().Logic().state;
  tour.Operator().Click(kWindow, "cmdClose");
  state.UnitFlag = 1;
  tour.Operator().Menu("MDIForm1", "calcSensorSpacing");
  Calculate(tour, {"4.5", "0.237", 5, 0}, "3.281");
  tour.Picture(kWindow, "calc_inch");
  state.UnitFlag = 0;
}

void Close(Tour& tour) {
  tour.Operator().Click(kWindow, "cmdClose");
  if (tour.Running().Logic().windows.Find(kWindow) != nullptr) throw Trouble("the calculator stays");
}

constexpr Step kSteps[] = {
    {"the calculator opens", Open},
    {"spacing by the V method", MountV},
    {"spacing by the Z method through a lining", MountZ},
    {"spacing on the sensors' scale", OnScale},
    {"spacing on a large pipe", Large},
    {"a value outside of its range", Mistype},
    {"values of a process page that does not know all", TakePart},
    {"values of the process page", Take},
    {"the sheet is saved", Save},
    {"spacing in inches", Inch},
    {"the calculator closes", Close},
};

}  // namespace

std::span<const Step> CalcSteps() { return kSteps; }

}  // namespace vlt::test
