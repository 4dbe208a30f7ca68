// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/code_tables.h"

#include <gtest/gtest.h>

#include "values/text.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

constexpr CodeContext kEnglish{.language = Language::kEnglish};

TEST(CodeTables, BothLanguagesHaveTheSameCodes) {
  for (int table = -1; table <= 70; ++table) {
    EXPECT_EQ(CodeTexts(kEnglish, table).size(), CodeTexts({}, table).size()) << "table " << table;
  }
  for (const int none : {-4, 0, 35, 36, 44, 70}) EXPECT_TRUE(CodeTexts(kEnglish, none).empty()) << none;
}

TEST(CodeTables, CodesOutsideOfATableHaveNoText) {
  EXPECT_EQ(CodeToText(kEnglish, 1, 12), "PIPE S.V.");
  EXPECT_EQ(CodeToText(kEnglish, 1, 13), "");
  EXPECT_EQ(CodeToText(kEnglish, 1, -1), "");
  EXPECT_EQ(CodeToText(kEnglish, 99, 0), "");
  EXPECT_EQ(CodeToText(kEnglish, 35, 7), "0007");
  EXPECT_EQ(CodeToText(kEnglish, 35, 12345), "12345");
  EXPECT_EQ(CodeToText({}, 1, 0), "炭素鋼");
}

TEST(CodeTables, SignedItemsCarryAnApostropheInReportsButNotInLists) {
  const std::vector<std::string> output = CodeTexts(kEnglish, 14);
  EXPECT_EQ(output[0], "NOT USED");
  EXPECT_EQ(output[1], "'+TOTAL PULSE");
  EXPECT_EQ(output[2], "'-TOTAL PULSE");
  EXPECT_EQ(output[6], "TOTAL SWITCH ");
  EXPECT_EQ(output[9], "-:FLOW DIRECTION");
  EXPECT_EQ(ListTexts(kEnglish, 14)[1], "+TOTAL PULSE");
  EXPECT_EQ(ListTexts(kEnglish, 14).size(), 20U);
  EXPECT_EQ(CodeToText(kEnglish, 18, 2), "FLOW RATE(%)");
  EXPECT_EQ(CodeToText(kEnglish, 18, 3), "'+TOTAL(ACTUAL)");
  EXPECT_EQ(CodeToText(kEnglish, 18, 6), "'-TOTAL PULSE");
  EXPECT_EQ(CodeToText(kEnglish, 18, 7), "H:TOTAL(THERMAL)");
  EXPECT_EQ(CodeToText(kEnglish, 30, 7), "RAS INFO.");
  EXPECT_EQ(CodeToText(kEnglish, 30, 16), "TEMP DIFFERENCE");
  for (const std::string& text : ListTexts({}, 18)) EXPECT_NE(text.front(), '\'');
}

TEST(CodeTables, ContextDecidesUnitsModelsAndCounts) {
  EXPECT_EQ(CodeToText({.unit_flag = 0}, 7, 1), "L/min");
  EXPECT_EQ(CodeToText({.unit_flag = -1}, 7, 1), "gal/min");
  EXPECT_EQ(CodeToText({.unit_flag = 0}, 11, 8), "");
  EXPECT_EQ(CodeToText({.unit_flag = 1}, 11, 8), "ACRf");
  EXPECT_EQ(CodeToText({.model_code = "M627"}, 6, 2), "WT-11");
  EXPECT_EQ(CodeToText({.model_code = "K410"}, 6, 11), "WT-30");
  EXPECT_EQ(CodeToText({}, 6, 1), "RESERVE");
  EXPECT_EQ(CodeToText({.operation_mode = 1}, 24, 0), "4");
  EXPECT_EQ(CodeToText({.operation_mode = 0}, 24, 0), "");
  EXPECT_EQ(CodeToText({.operation_mode = 0}, 24, 1), "8");
  EXPECT_EQ(ListTexts({.operation_mode = 0}, 24).front(), "8");
  EXPECT_EQ(ListTexts({.operation_mode = 0}, 24).size(), ListTexts({.operation_mode = 1}, 24).size());
}

TEST(Alarms, CountFromTheLeftOfTheWord) {
  EXPECT_EQ(AlarmText(Language::kEnglish, 0), "E1:DEVICE ERROR 1");
  EXPECT_EQ(AlarmText(Language::kEnglish, 10), "E1:DEVICE ERROR 4");
  EXPECT_EQ(AlarmText(Language::kEnglish, 15), "E4:TEMPERATURE ERROR");
  for (const int none : {-1, 11, 12, 13, 16}) EXPECT_EQ(AlarmText(Language::kJapanese, none), "") << none;
  const auto rows = AlarmRows(Language::kEnglish);
  EXPECT_EQ(rows[9], "E1:DEVICE ERROR 3");
  EXPECT_EQ(rows[12], "RESERVE");
  EXPECT_EQ(rows[14], "E4:RANGE OVER");
}

TEST(UnitNames, FollowTheUnitSystem) {
  EXPECT_EQ(BuildFlowUnitNames(0)[8], "m3/h");
  EXPECT_EQ(BuildFlowUnitNames(1)[8], "ft3/h");
  EXPECT_EQ(BuildBaseUnitNames(1)[1], "ft/s");
  using Four = std::array<std::string, 4>;
  EXPECT_EQ(SubGetUnitForm10(1, 0), (Four{"ft/s", "inch", "°F", "°"}));
  EXPECT_EQ(SubGetUnitForm10(0, 2)[2], "degF") << "what is no known pair has English units";
}

}  // namespace
}  // namespace vlt
