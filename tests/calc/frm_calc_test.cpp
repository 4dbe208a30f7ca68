// SPDX-License-Identifier: GPL-3.0-or-later
// The calculator's drawing and sheets.
#include <gtest/gtest.h>

#include "calc/calc.h"
#include "calc/frm_calc.h"
#include "pages/pages.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_pages.h"
#include "support/keeping_printer.h"
#include "support/test_app.h"

namespace vlt::test {
namespace {

class CalcTest : public testing::Test {
 protected:
  CalcTest() {
    test.platform.machine.printer = &printer;
    RegisterCalcWindows(test.app);
    test.app.windows.Run([&] { test.app.windows.Load("frmCalc").Show(); });
  }
  frmCalc& calc() { return *static_cast<frmCalc*>(test.app.windows.Find("frmCalc")); }
  void SteelPipe() {
    calc().OUTER_DIAMETERText.Type("100");
    calc().WALL_THICKNESSText.Type("5");
    calc().SENSOR_TYPECombo.Choose(4);
  }

  KeepingPrinter printer;
  TestApp test;
};

// The points of the sound's way on the sheet.
std::vector<SheetPoint> SoundOn(const Sheet& sheet) {
  for (const SheetItem& item : sheet.Items()) {
    if (item.ink == Ink::kSound && item.kind == SheetKind::kLine) return item.points;
  }
  return {};
}

TEST_F(CalcTest, TheDrawingFollowsEveryValidChange) {
  EXPECT_EQ(calc().picSpacing.Note(), "OUTER DIAMETER is not entered");
  SteelPipe();
  EXPECT_EQ(calc().picSpacing.Note(), "");
  const std::vector<SheetPoint> way = SoundOn(calc().picSpacing.Shown());
  ASSERT_EQ(way.size(), 9u) << "wedge, wall, lining, fluid, and back";
  // To scale: angle of the fluid, wall to bore, in both directions alike.
  const double fluid = (way[4].x - way[3].x) / (way[4].y - way[3].y);
  EXPECT_NEAR(fluid, 0.416711, 1e-6) << "tan(arcsin(1440 / 2505 sin 42))";
  EXPECT_NEAR((way[4].y - way[3].y) / (way[2].y - way[1].y), 90.0 / 5, 1e-9);
  calc().SENSOR_MOUNTCombo.Choose(1);
  EXPECT_GT(SoundOn(calc().picSpacing.Shown()).back().y, way[4].y) << "the other sensor stands below";
  const Sheet last = calc().picSpacing.Shown();
  calc().WALL_THICKNESSText.Type("50");
  EXPECT_EQ(calc().picSpacing.Note(), test.app.Text(text::kNoBore));
  calc().WALL_THICKNESSText.Type("101");
  EXPECT_EQ(calc().picSpacing.Note(), "WALL THICKNESS: The value is outside of range");
  EXPECT_EQ(calc().picSpacing.Shown(), last);
  calc().WALL_THICKNESSText.Type("5");
  EXPECT_EQ(calc().picSpacing.Note(), "");
}

TEST_F(CalcTest, EveryPipeFitsItsSheet) {
  for (const char* diameter : {"6", "60.5", "6200"}) {
    for (int sensor = 0; sensor < 12; ++sensor) {
      for (const int mount : {0, 1}) {
        SCOPED_TRACE(std::string(diameter) + " sensor " + std::to_string(sensor));
        calc().OUTER_DIAMETERText.Type(diameter);
        calc().WALL_THICKNESSText.Type("0.5");
        calc().SENSOR_TYPECombo.Choose(sensor);
        calc().SENSOR_MOUNTCombo.Choose(mount);
        ASSERT_EQ(calc().picSpacing.Note(), "");
        for (const SheetItem& item : calc().picSpacing.Shown().Items()) {
          for (const SheetPoint& point : item.points) {
            EXPECT_TRUE(point.x >= 0 && point.x <= kDrawingWidth) << point.x << " " << item.text;
            EXPECT_TRUE(point.y >= 0 && point.y <= kDrawingHeight) << point.y << " " << item.text;
          }
        }
      }
    }
  }
}

TEST_F(CalcTest, EverySheetHasItsMargins) {
  SteelPipe();
  calc().cmdPrint.Press();
  calc().LINING_MATERIALCombo.Choose(1);
  calc().LINING_THICKNESSText.Type("1.25");
  calc().SENSOR_TYPECombo.Choose(2);
  calc().cmdPrint.Press();
  ASSERT_EQ(printer.sheets.size(), 2u);
  for (const Sheet& sheet : printer.sheets) {
    EXPECT_LT(sheet.Items().size(), 200u);
    for (const SheetItem& item : sheet.Items()) {
      for (const SheetPoint& point : item.points) {
        EXPECT_TRUE(point.x >= 10 && point.x <= sheet.Width() - 10) << point.x << " " << item.text;
        EXPECT_TRUE(point.y >= 10 && point.y <= sheet.Height() - 10) << point.y << " " << item.text;
      }
    }
  }
}

}  // namespace
}  // namespace vlt::test
