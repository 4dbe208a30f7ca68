// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form4.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form4& OpenForm4(PageTest& page) { return page.Open<Form4>("Form4"); }

// Where the registers of an output lie; "" where a shape has none.
struct Output {
  const char* channel;
  const char* function;
  const char* flow_direction;
  const char* flow_high;
  const char* flow_low;
  const char* total;
  const char* action;
  const char* thermal_direction;
  const char* thermal_high;
  const char* thermal_low;
  const char* thermal_total;
};

const Output kOutputs[] = {
    {"04 A8", "00 5A", "00 5E", "00 60", "00 68", "00 70", "00 78", "04 30", "04 32", "04 3A", "04 42"},
    {"04 AA", "00 7A", "00 7E", "00 80", "00 88", "00 90", "00 98", "04 4A", "04 4C", "04 54", "04 5C"},
    {"04 AC", "00 9A", "00 9E", "00 A0", "00 A8", "00 B0", "00 B8", "04 64", "04 66", "04 6E", "04 76"},
    {"04 AE", "04 10", "04 14", "04 16", "04 1E", "04 26", "04 2E", "04 7E", "04 80", "04 88", "04 90"},
};

std::string Word(const char* address, const char* value) {
  return std::string("10 ") + address + " 00 01 02 " + value;
}
// 2.5 as a double.
std::string Double(const char* address) {
  return std::string("10 ") + address + " 00 04 08 40 04 00 00 00 00 00 00";
}

TEST(Form4, EachFunctionWritesItsOwnRegistersOnEveryOutput) {
  PageTest test({"two paths", kFull, 1, 0});
  Form4& page = OpenForm4(test);
  page.SELECT_Check.Tick();
  page.MODE_DO_1.Tick();
  for (int output = 0; output < 4; ++output) {
    SCOPED_TRACE(output);
    const Output& at = kOutputs[output];
    page.DigitalOutputSelect(output).Choose();
    page.CH_Combo.Choose(1);
    page.MODE_DO_1Combo.Choose(1);
    const auto set = [&](int function) {
      page.OUTPUT_DO_1Combo.Choose(function);
      test.Requests();
      page.SetParameter.Press();
      Texts writes;
      for (const std::string& request : test.Requests()) {
        if (request.starts_with("10")) writes.push_back(request);
      }
      EXPECT_EQ(writes.at(0), Word(at.channel, "00 01"));
      EXPECT_EQ(writes.back(), Word(at.action, "00 01"));
      return Texts(writes.begin() + 1, writes.end() - 1);
    };
    EXPECT_EQ(set(0), Texts{Word(at.function, "00 00")});
    EXPECT_EQ(set(3), Texts{Word(at.function, "00 03")});
    page.OUTPUT_DO_1Combo.Choose(5);
    page.optDO1FlowSWHigh.Choose();
    page.DO1_RyuryoText(0).Type("2.5");
    EXPECT_EQ(set(5),
              (Texts{Word(at.function, "00 05"), Word(at.flow_direction, "00 00"), Double(at.flow_high)}));
    page.optDO1FlowSWLow.Choose();
    EXPECT_FALSE(page.DO1_RyuryoText(0).Enabled());
    page.DO1_RyuryoText(1).Type("2.5");
    EXPECT_EQ(set(5),
              (Texts{Word(at.function, "00 05"), Word(at.flow_direction, "00 01"), Double(at.flow_low)}));
    page.DO1_SekisanText.SetText("2.5");
    EXPECT_EQ(set(6), (Texts{Word(at.function, "00 06"), Double(at.total)}));
    page.OUTPUT_DO_1Combo.Choose(13);
    page.optFLOW_SWITCH_T_LOW.Choose();
    page.H_RyuryoText(1).Type("2.5");
    EXPECT_EQ(set(13), (Texts{Word(at.function, "00 0D"), Word(at.thermal_direction, "00 01"),
                              Double(at.thermal_low)}));
    page.optFLOW_SWITCH_T_HIGH.Choose();
    page.H_RyuryoText(0).Type("");
    EXPECT_EQ(set(13), (Texts{Word(at.function, "00 0D"), Word(at.thermal_direction, "00 00")}));
    page.H_TOTALText.SetText("2.5");
    EXPECT_EQ(set(14), (Texts{Word(at.function, "00 0E"), Double(at.thermal_total)}));
  }
}

TEST(Form4, ReadShowsThePartOfTheOutputAndLeavesTheOtherDirection) {
  PageTest test({"one path", kFull, 0, 1});
  Form4& page = OpenForm4(test);
  auto& memory = test.meter().holding();
  memory.PutWord(0x007A, 5);
  memory.PutWord(0x007E, 1);
  memory.PutDouble(0x0088, 12.3456789012);
  memory.PutWord(0x0002, 0);  // velocity
  memory.PutWord(0x04AA, 0);
  page.DigitalOutputSelect(1).Choose();
  page.SELECT_Check.Tick();
  page.DO1_RyuryoText(0).SetText("kept");
  page.ReadParameter.Press();
  EXPECT_TRUE(page.optDO1FlowSWLow.Value());
  EXPECT_EQ(page.DO1_RyuryoText(1).Text(), "12.345678");
  EXPECT_EQ(page.DO1_RyuryoText(0).Text(), "kept");
  EXPECT_TRUE(page.DO1_RyuryoText(1).Enabled());
  EXPECT_EQ(page.LabelRyuryoUnit(1).Caption(), "[ft/s]");
}

TEST(Form4, TheFunctionIsKeptWhereTheListHasIt) {
  PageTest test({"two paths", kFull, 1, 0});
  Form4& page = OpenForm4(test);
  page.SELECT_Check.Tick();
  page.OUTPUT_DO_1Combo.Choose(14);
  page.DigitalOutputSelect(1).Choose();
  EXPECT_EQ(page.OUTPUT_DO_1Combo.ListIndex(), 14) << "the longer list keeps the choice";
  EXPECT_EQ(page.SELECT_Check.Caption(), "DO2");
  test.app().state.PathMode = 2;
  test.meter().holding().PutWord(0x03E8, 2);
  page.Show();
  EXPECT_EQ(page.OUTPUT_DO_1Combo.ListIndex(), -1) << "what is not offered any more is not selected";
  EXPECT_FALSE(page.H_TOTALText.Enabled());
  // The output that was looked at last.
  ASSERT_TRUE(test.app().windows.Unload("Form4"));
  Form4& again = OpenForm4(test);
  EXPECT_TRUE(again.DigitalOutputSelect(1).Value());
  EXPECT_EQ(again.SELECT_Check.Caption(), "DO2");
}

}  // namespace
}  // namespace vlt::test
