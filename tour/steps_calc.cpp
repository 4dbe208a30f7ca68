// Sensor spacing calculator: V and Z, metric and inch, values of the process page, the sheet.
#include <QDir>
#include <QFile>
#include <QImage>

#include "desktop/qt_text.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kWindow = "frmCalc";
constexpr const char* kResult = "txtResult1Text";

void ExpectResult(Tour& tour, const std::string& spacing) {
  tour.Operator().Click(kWindow, "ExecuteCalc");
  tour.Expect("the spacing", tour.Operator().Text(kWindow, kResult), spacing);
}

void Open(Tour& tour) {
  tour.Operator().Menu("MDIForm1", "calcSensorSpacing");
  tour.Picture(kWindow, "calc_empty");
}

void MountV(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Type(kWindow, "OUTER_DIAMETERText", "100");
  hands.Type(kWindow, "WALL_THICKNESSText", "5");
  hands.Choose(kWindow, "SENSOR_TYPECombo", 4);
  ExpectResult(tour, "52.54");
  tour.Picture(kWindow, "calc_v");
}

void Close(Tour& tour) {
  tour.Operator().Click(kWindow, "cmdClose");
  if (tour.Running().Logic().windows.Find(kWindow) != nullptr) throw Trouble("the calculator stays");
}

constexpr Step kSteps[] = {
    {"the calculator opens", Open},
    {"V method", MountV},
    {"the calculator closes", Close},
};

}  // namespace

std::span<const Step> CalcSteps() { return kSteps; }

}  // namespace vlt::test
