// SPDX-License-Identifier: GPL-3.0-or-later
// The calculator's window, worked by gestures: locks, checks, results, drawing, process values, sheets.
#include <gtest/gtest.h>

#include <algorithm>

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

using Texts = std::vector<std::string>;

class CalcTest : public testing::Test {
 protected:
  explicit CalcTest(int unit_flag = 0) {
    test.platform.machine.printer = &printer;
    test.app.state.UnitFlag = unit_flag;
    RegisterCalcWindows(test.app);
    RegisterPages(test.app);
    Show();
  }
  void Show() {
    test.app.windows.Run([&] { test.app.windows.Load("frmCalc").Show(); });
  }
  frmCalc& calc() { return *static_cast<frmCalc*>(test.app.windows.Find("frmCalc")); }
  void TypeAndLeave(TextBox& box, const std::string& text) {
    EXPECT_TRUE(box.Type(text));
    box.LoseFocus();
  }
  void SteelPipe() {
    calc().OUTER_DIAMETERText.Type("100");
    calc().WALL_THICKNESSText.Type("5");
    calc().SENSOR_TYPECombo.Choose(4);
  }
  void Answer() { test.platform.dialogs.Answer(MessageAnswer::kOk); }
  Texts Said() { return test.platform.dialogs.TakeTexts(); }
  std::string Text(int id) { return test.app.Text(id); }
  std::string& Slot(const char* key) { return test.app.slots.At("PROCESS SETTING", key); }
  static bool Shows(const Sheet& sheet, const std::string& text) {
    return std::any_of(sheet.Items().begin(), sheet.Items().end(),
                       [&](const SheetItem& item) { return item.text == text; });
  }

  KeepingPrinter printer;
  TestApp test;
};

TEST_F(CalcTest, UnitsRangesAndSensorsFollowUnitSystemAndModel) {
  EXPECT_EQ(calc().FLUID_S_VText.BackColour(), kButtonFaceColour);
  test.app.windows.Unload("frmCalc");
  test.app.state.UnitFlag = 1;
  test.app.state.ModelCode = "K410";
  Show();
  EXPECT_EQ(calc().LINING_THICKNESS_RANGE.Caption(), "0.0003-3.9380inch");
  EXPECT_EQ((Texts{calc().Label8(0).Caption(), calc().Label8(1).Caption(), calc().Label2.Caption()}),
            (Texts{"inch", "inch", "inch"}));
  EXPECT_EQ((Texts{calc().Label12.Caption(), calc().Label1(0).Caption(), calc().Label1(1).Caption()}),
            (Texts{"ft/s", "ft/s", "ft/s"}));
  EXPECT_EQ(calc().lblMount2Sensor.Caption(), "(WT-21,WT-22)");
}

struct LockCase {
  ComboBox frmCalc::*list;
  int index;
  // Open fields in the order of their marks, the first two left out.
  std::array<bool, 4> open;
};

constexpr LockCase kLocks[] = {
    {&frmCalc::PIPE_MATERIALCombo, 11, {false, false, false, false}},
    {&frmCalc::PIPE_MATERIALCombo, 12, {true, false, false, false}},
    {&frmCalc::LINING_MATERIALCombo, 1, {true, true, false, false}},
    {&frmCalc::LINING_MATERIALCombo, 7, {true, true, true, false}},
    {&frmCalc::KIND_OF_FLUIDCombo, 17, {true, true, true, true}},
    {&frmCalc::LINING_MATERIALCombo, 0, {true, false, false, true}},
    {&frmCalc::PIPE_MATERIALCombo, 0, {false, false, false, true}},
    {&frmCalc::KIND_OF_FLUIDCombo, 16, {false, false, false, false}},
};

TEST_F(CalcTest, ListsOpenAndLockTheFieldsThatBelongToThem) {
  for (const LockCase& row : kLocks) {
    SCOPED_TRACE((calc().*row.list).Name() + " " + std::to_string(row.index));
    EXPECT_TRUE((calc().*row.list).Choose(row.index));
    const TextBox* boxes[] = {&calc().TRANS_FREQUENCYText, &calc().LINING_THICKNESSText,
                              &calc().LINING_S_VText, &calc().FLUID_S_VText};
    for (std::size_t i = 0; i < row.open.size(); ++i) {
      SCOPED_TRACE(boxes[i]->Name());
      EXPECT_EQ(boxes[i]->Locked(), !row.open[i]);
      EXPECT_EQ(boxes[i]->BackColour(), row.open[i] ? kWindowColour : kButtonFaceColour);
      EXPECT_EQ(calc().lblRequired(static_cast<int>(i) + 2).Caption(), row.open[i] ? "*" : "");
    }
  }
}

TEST_F(CalcTest, FieldsAreCheckedWhenTheyAreLeftAndTheFocusGoesOn) {
  const struct {
    const char* text;
    int message;
  } rows[] = {{"", 0},      {"6", 0},        {"6200.00", 0}, {"5.99", 3921}, {"6200.01", 3921},
              {"6o", 3920}, {"1.2.3", 3920}, {"12,5", 4380}, {".5", 3920},   {"1,016.4", 4380}};
  int marks = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    if (row.message != 0) Answer();
    TypeAndLeave(calc().OUTER_DIAMETERText, row.text);
    EXPECT_EQ(Said(), row.message != 0 ? Texts{Text(row.message)} : Texts{});
    marks += row.message != 0 ? 1 : 0;
    EXPECT_EQ(calc().OUTER_DIAMETERText.SelectAllCount(), marks);
    EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), row.text);
  }
  EXPECT_EQ(calc().FocusCount(), 0);
}

TEST_F(CalcTest, AFailureKeepsTheResults) {
  SteelPipe();
  calc().ExecuteCalc.Press();
  EXPECT_EQ(calc().txtResult1Text.Text(), "52.54");
  EXPECT_EQ(calc().txtResult2Text.Text(), "");
  calc().WALL_THICKNESSText.Type("5..5");
  EXPECT_EQ(calc().lblNote.Caption(), Text(text::kCalcOutdated));
  Answer();
  calc().ExecuteCalc.Press();
  EXPECT_EQ(Said(), (Texts{"WALL THICKNESS: \"5..5\" is not a number"}));
  EXPECT_EQ(test.platform.dialogs.messages.back().icon, MessageIcon::kNone);
  EXPECT_EQ(calc().txtResult1Text.Text(), "52.54");
  calc().WALL_THICKNESSText.Type("5");
  EXPECT_EQ(calc().lblNote.Caption(), "") << "the result holds again";
  calc().SENSOR_TYPECombo.Choose(2);
  calc().ExecuteCalc.Press();
  EXPECT_EQ(calc().txtResult2Text.Text(), "29");
  calc().SENSOR_TYPECombo.Choose(4);
  calc().ExecuteCalc.Press();
  EXPECT_EQ(calc().txtResult2Text.Text(), "") << "no scale, no step";
}

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
  EXPECT_TRUE(Shows(calc().picSpacing.Shown(), "52.54 mm"));
  calc().SENSOR_MOUNTCombo.Choose(1);
  EXPECT_GT(SoundOn(calc().picSpacing.Shown()).back().y, way[4].y) << "the other sensor stands below";
  const Sheet last = calc().picSpacing.Shown();
  calc().WALL_THICKNESSText.Type("50");
  EXPECT_EQ(calc().picSpacing.Note(), Text(text::kNoBore));
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

TEST_F(CalcTest, ProcessValuesFillTheFieldsAndTellWhatIsMissing) {
  Answer();
  calc().cmdTake.Press();
  EXPECT_EQ(Said(), (Texts{Text(text::kProcessEmpty)}));
  Slot("PIPE_MATERIAL_Data") = "12";
  Slot("PIPE_S_V_Data") = "2500";
  Slot("PIPE_S_V_Unit") = "[m/s]";
  Slot("WALL_THICKNESS_Data") = "0.1496";
  Slot("WALL_THICKNESS_Unit") = "[inch]";
  Slot("LINING_MATERIAL_Data") = "0";
  Slot("KIND_OF_FLUID_Data") = "1.5";  // no entry of the list
  Slot("SENSOR_TYPE_Data") = "9";
  Slot("SENSOR_MOUNT_Data") = "2";
  calc().cmdTake.Press();
  EXPECT_EQ(calc().PIPE_MATERIALCombo.ListIndex(), 12);
  EXPECT_EQ(calc().TRANS_FREQUENCYText.Text(), "2500");
  EXPECT_EQ(calc().WALL_THICKNESSText.Text(), "3.80") << "kept in inches";
  EXPECT_EQ(calc().SENSOR_TYPECombo.ListIndex(), 9);
  EXPECT_EQ(calc().LINING_MATERIALCombo.ListIndex(), 0);
  EXPECT_EQ(calc().KIND_OF_FLUIDCombo.ListIndex(), -1) << "the page knows none";
  EXPECT_EQ(calc().SENSOR_MOUNTCombo.ListIndex(), -1) << "no other mount stands for one that is not offered";
  const std::string taken =
      "Taken from the process page (CH1): PIPE MATERIAL, WALL THICKNESS, PIPE S.V., LINING MATERIAL, SENSOR "
      "TYPE";
  const std::string missing =
      "Not there, so emptied: OUTER DIAMETER, KIND OF FLUID, SENSOR MOUNT (W METHOD is not offered here)";
  EXPECT_EQ(test.StatusText(), taken + "   " + missing) << "of fields that are not in use nothing";
  EXPECT_EQ(calc().lblNote.Caption(), taken + "\n" + missing);
  // Without a mount or a fluid there is no result, on whatever way.
  calc().OUTER_DIAMETERText.Type("88");
  EXPECT_EQ(calc().picSpacing.Note(), "KIND OF FLUID: nothing is chosen");
  calc().KIND_OF_FLUIDCombo.Choose(0);
  for (PushButton* button : {&calc().ExecuteCalc, &calc().cmdPrint}) {
    Answer();
    button->Press();
    EXPECT_EQ(Said(), (Texts{"SENSOR MOUNT: nothing is chosen"}));
  }
  calc().SENSOR_MOUNTCombo.Choose(0);
  calc().ExecuteCalc.Press();
  EXPECT_NE(calc().txtResult1Text.Text(), "");
  test.app.state.ProcessChannel = 1;
  Slot("OUTER_DIAMETER_Data") = "88.0";
  Slot("KIND_OF_FLUID_Data") = "0";
  Slot("SENSOR_MOUNT_Data") = "1";
  Slot("SENSOR_TYPE_Data") = "9";
  Answer();
  calc().cmdTake.Press();
  EXPECT_EQ(Said(), (Texts{FormatText(Text(text::kTypedGoes), {"SENSOR MOUNT V METHOD"})}));
  const std::string note = calc().lblNote.Caption();
  EXPECT_TRUE(note.starts_with("Taken from the process page (CH2): OUTER DIAMETER, PIPE MATERIAL,")) << note;
  EXPECT_TRUE(note.ends_with("SENSOR MOUNT, SENSOR TYPE")) << note;
  EXPECT_EQ(calc().txtResult1Text.Text(), "") << "it was that of another pipe";
  calc().ExecuteCalc.Press();
  const std::string result = calc().txtResult1Text.Text();
  calc().cmdTake.Press();
  EXPECT_EQ(calc().txtResult1Text.Text(), result) << "of these very values";
}

TEST_F(CalcTest, WhatWasEnteredIsAskedForBeforeItGoes) {
  SteelPipe();
  calc().FLUID_S_VText.SetText("1500");  // put there by the program
  Slot("OUTER_DIAMETER_Data") = "100.00";
  Slot("SENSOR_TYPE_Data") = "9";
  for (const MessageAnswer answer : {MessageAnswer::kCancel, MessageAnswer::kOk}) {
    test.platform.dialogs.Answer(answer);
    calc().cmdTake.Press();
    EXPECT_EQ(Said(),
              (Texts{FormatText(Text(text::kTypedGoes), {"WALL THICKNESS 5 mm\nSENSOR TYPE WT-13"})}));
    const bool taken = answer == MessageAnswer::kOk;
    EXPECT_EQ(calc().WALL_THICKNESSText.Text(), taken ? "" : "5");
    EXPECT_EQ(calc().FLUID_S_VText.Text(), taken ? "" : "1500");
    EXPECT_EQ(calc().SENSOR_TYPECombo.ListIndex(), taken ? 9 : 4);
    EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), taken ? "100.00" : "100");
    EXPECT_EQ(calc().picSpacing.Shown().Empty(), taken) << "no pipe of before behind the note";
  }
  calc().cmdTake.Press();
  EXPECT_EQ(Said(), Texts{}) << "what was taken was not entered";
}

// The page shows what it has read of the other channel beside that of its own, and marks it.
TEST_F(CalcTest, WhatWasReadOfAnotherPipeIsNotTaken) {
  const auto read = [&](const char* key, const std::string& value, int channel, int station) {
    Slot(key) = value;
    OriginRecord& record = test.app.origins.Of(SlotOf("PROCESS SETTING", key));
    record = {};
    record.source = OriginRecord::Source::kRead;
    record.value = value;
    record.place = {.meter = {.port = 1, .station = station}, .id_number = {}, .index = channel};
  };
  read("OUTER_DIAMETER_Data", "60.50", 1, 1);
  read("WALL_THICKNESS_Data", "3.80", 0, 1);
  read("PIPE_MATERIAL_Data", "0", 1, 2);
  read("KIND_OF_FLUID_Data", "0", 0, 1);
  test.app.origins.Of(SlotOf("PROCESS SETTING", "KIND_OF_FLUID_Data")).typed = "0";
  test.app.state.ProcessChannel = 1;
  calc().cmdTake.Press();
  EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), "60.50");
  EXPECT_EQ(calc().WALL_THICKNESSText.Text(), "");
  EXPECT_EQ(calc().PIPE_MATERIALCombo.ListIndex(), -1);
  EXPECT_EQ(calc().KIND_OF_FLUIDCombo.ListIndex(), 0) << "typed over it";
  EXPECT_NE(test.StatusText().find("PIPE MATERIAL (CARBON STEEL is of another pipe), "
                                   "WALL THICKNESS (3.80 is of another pipe)"),
            std::string::npos)
      << test.StatusText();
  for (const char* key : {"OUTER_DIAMETER_Data", "KIND_OF_FLUID_Data"}) Slot(key) = "";
  Answer();
  calc().cmdTake.Press();
  EXPECT_TRUE(Said()[0].starts_with("The process page holds no value that can be taken: "));
  EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), "60.50") << "nothing was emptied for nothing";
}

TEST_F(CalcTest, AnOpenProcessPageIsAskedForWhatItShows) {
  Form& page = test.app.windows.Load("Form10");
  static_cast<TextBox*>(page.Find("OUTER_DIAMETERText"))->SetText("114.3");
  calc().cmdTake.Press();
  EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), "114.3");
}

TEST_F(CalcTest, TheSheetIsThatOfTheFields) {
  Answer();
  calc().cmdPrint.Press();
  EXPECT_EQ(Said(), (Texts{"OUTER DIAMETER is not entered"}));
  EXPECT_TRUE(printer.sheets.empty());
  SteelPipe();
  calc().cmdPrint.Press();
  ASSERT_EQ(printer.sheets.size(), 1u);
  EXPECT_EQ(calc().txtResult1Text.Text(), "52.54") << "calculated for the sheet";
  for (const char* text :
       {"Sensor Spacing Calculation", "OUTER DIAMETER", "100", "WALL THICKNESS", "FLUID S.V.", "CARBON STEEL",
        "3000", "WT-13", "V METHOD", "52.54", "52.54 mm", "2026/11/24 10:00:00"}) {
    EXPECT_TRUE(Shows(printer.sheets[0], text)) << text;
  }
  EXPECT_FALSE(Shows(printer.sheets[0], "LINING S.V.")) << "there is no lining";
  EXPECT_EQ(test.StatusText(), "Sensor Spacing Calculation was sent to the printer");
  calc().LINING_MATERIALCombo.Choose(1);
  calc().LINING_THICKNESSText.Type("1.25");
  calc().SENSOR_TYPECombo.Choose(2);
  calc().cmdPrint.Press();
  for (const char* text : {"LINING S.V.", "1.25", "SENSOR SPACING2"}) {
    EXPECT_TRUE(Shows(printer.sheets[1], text)) << text;
  }
  for (const Sheet& sheet : printer.sheets) {
    EXPECT_LT(sheet.Items().size(), 200u);
    for (const SheetItem& item : sheet.Items()) {
      for (const SheetPoint& point : item.points) {
        EXPECT_TRUE(point.x >= 10 && point.x <= sheet.Width() - 10) << point.x << " " << item.text;
        EXPECT_TRUE(point.y >= 10 && point.y <= sheet.Height() - 10) << point.y << " " << item.text;
      }
    }
  }
  const struct {
    PrintOutcome outcome;
    Texts said;
  } rows[] = {{PrintOutcome::kCancelled, {}},
              {PrintOutcome::kNoPrinter, {Text(text::kNoPrinter)}},
              {PrintOutcome::kFailed, {Text(text::kPrintFailed)}}};
  for (const auto& row : rows) {
    printer.outcome = row.outcome;
    if (!row.said.empty()) Answer();
    calc().cmdPrint.Press();
    EXPECT_EQ(Said(), row.said);
  }
}

TEST_F(CalcTest, SheetsAreSavedByTheirEnding) {
  SteelPipe();
  auto& files = test.platform.files.files;
  for (const char* path : {"/data/a.pdf", "/data/b.PNG"}) {
    test.platform.dialogs.SaveFile(path);
    calc().cmdSave.Press();
  }
  EXPECT_EQ(files["/data/a.pdf"], "a pdf");
  EXPECT_EQ(files["/data/b.PNG"], "a png");
  EXPECT_EQ(test.StatusText(), "Saved b.PNG");
  test.platform.dialogs.SaveFile(std::nullopt);
  calc().cmdSave.Press();
  Answer();
  test.platform.dialogs.SaveFile("/data/c.txt");
  calc().cmdSave.Press();
  EXPECT_EQ(Said(), (Texts{"c.txt: the name must end in .pdf or .png"}));
  EXPECT_FALSE(files.contains("/data/c.txt"));
  printer.fails = true;
  Answer();
  test.platform.dialogs.SaveFile("/data/a.pdf");
  calc().cmdSave.Press();
  EXPECT_EQ(Said(), (Texts{Text(text::kSheetNotMade)}));
  EXPECT_EQ(files["/data/a.pdf"], "a pdf") << "the old file stands";
  test.platform.machine.printer = nullptr;
  for (PushButton* button : {&calc().cmdPrint, &calc().cmdSave}) {
    Answer();
    button->Press();
    EXPECT_EQ(Said(), (Texts{Text(text::kPrintingMissing)}));
  }
}

TEST_F(CalcTest, AChangeOfTheUnitSystemKeepsWhatWasTyped) {
  SteelPipe();
  calc().ExecuteCalc.Press();
  Show();
  test.app.state.UnitFlag = 1;
  EXPECT_EQ(calc().txtResult1Text.Text(), "52.54") << "the fields still show millimetres";
  Show();
  EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), "3.9370");
  // Any other event is enough: a read that has learnt the unit system, a click on the window.
  for (const auto& [unit_flag, diameter] : {std::pair(0, "100.00"), {1, "3.9370"}}) {
    test.app.windows.Run([&, flag = unit_flag] { test.app.state.UnitFlag = flag; });
    EXPECT_EQ(calc().OUTER_DIAMETERText.Text(), diameter);
  }
  EXPECT_EQ(calc().LINING_THICKNESSText.Text(), "");
  EXPECT_EQ(calc().Label8(0).Caption(), "inch");
  EXPECT_EQ(calc().txtResult1Text.Text() + calc().lblNote.Caption(), "")
      << "no result that could be outdated";
  calc().cmdPrint.Press();
  EXPECT_EQ(calc().txtResult1Text.Text(), "2.068");
  EXPECT_TRUE(Shows(printer.sheets[0], "9843")) << "the list's velocity in ft/s";
  calc().OUTER_DIAMETERText.Type("4.5");
  EXPECT_EQ(calc().lblNote.Caption(), Text(text::kCalcOutdated));
}

}  // namespace
}  // namespace vlt::test
