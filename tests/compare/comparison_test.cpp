// SPDX-License-Identifier: GPL-3.0-or-later
// Sides held against each other, and values that go from one meter to another.
#include "compare/comparison.h"

#include <algorithm>
#include <random>
#include <stdexcept>

#include "compare/comparison_export.h"
#include "compare_fixture.h"
#include "files/parameter_file.h"
#include "meter/value_text.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

std::size_t SumOf(const Comparison& comparison) {
  std::size_t sum = 0;
  for (std::size_t i = 0; i < kRowStates; ++i) sum += comparison.Count(static_cast<RowState>(i));
  return sum;
}

const ComparisonRow& RowAt(const Comparison& comparison, const char* name, int index = 0) {
  return *std::find_if(comparison.Rows().begin(), comparison.Rows().end(),
                       [&](const ComparisonRow& row) { return row.place == At(name, index); });
}

TEST(Comparison, SaysNoDifferencesOnlyWhenEveryRowIsEqual) {
  CompareTest test(kTwoPaths);
  const CompareSide before = test.Meter();
  const Comparison same(before, test.Meter());
  EXPECT_TRUE(same.NoDifferences() && same.Complete());
  EXPECT_EQ(SummaryText(same, Language::kEnglish), "No differences in 225 parameters");

  const auto spoilt = [&](auto&& spoil) {
    CompareSide side = before;
    spoil(side);
    const Comparison comparison(before, side);
    EXPECT_EQ(SumOf(comparison), comparison.All());
    EXPECT_FALSE(comparison.NoDifferences());
    return comparison.Complete();
  };
  EXPECT_TRUE(spoilt([](CompareSide& side) { side.cells[7].raw.back() ^= 1; }))
      << "different, and known to be";
  EXPECT_FALSE(spoilt([](CompareSide& side) { side.cells.pop_back(); }));
  EXPECT_FALSE(spoilt([](CompareSide& side) { side.cells.clear(); }));
  EXPECT_FALSE(spoilt([](CompareSide& side) { side.remarks.emplace_back("a line that was not taken"); }));
  EXPECT_FALSE(spoilt([](CompareSide& side) {
    side.cells[7].raw.clear();
    side.cells[7].problem = "no answer";
  }));
  EXPECT_FALSE(Comparison({}, {}).NoDifferences()) << "of nothing";
  CompareSide unread = before;
  unread.cells[7].raw.clear();
  unread.cells[7].problem = "no answer";
  EXPECT_FALSE(Comparison(unread, unread).NoDifferences()) << "unread on both sides is not equal";
}

// Whatever the sides lack, the counts are those of the rows, and of each side's cells.
TEST(Comparison, CountsAddUpWhateverIsMissingOrUnread) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    const Shape& left_shape = kShapes[random() % std::size(kShapes)];
    const Shape& right_shape = kShapes[random() % std::size(kShapes)];
    CompareTest a(left_shape);
    CompareTest b(right_shape, 5000, 7 + round % 2);
    a.meter().BreakMemory(sim::Space::Holding, random() % 0x500, 0x500 + random() % 0x100, 2);
    CompareSide left = a.Meter();
    CompareSide right = b.Meter();
    for (CompareSide* side : {&left, &right}) {
      std::erase_if(side->cells, [&](const SideCell&) { return random() % 7 == 0; });
    }
    const Comparison comparison(left, right);
    EXPECT_EQ(SumOf(comparison), comparison.All());
    EXPECT_EQ(comparison.Rows().size(), comparison.All());
    const std::size_t both =
        comparison.All() - comparison.Count(RowState::kOnlyLeft) - comparison.Count(RowState::kOnlyRight);
    EXPECT_EQ(both + comparison.Count(RowState::kOnlyLeft), left.cells.size());
    EXPECT_EQ(both + comparison.Count(RowState::kOnlyRight), right.cells.size());
    EXPECT_FALSE(comparison.NoDifferences());
  }
}

TEST(Comparison, CannotBeBuiltFromSidesWhoseRowsWouldBeCountedTwice) {
  CompareTest test(kOnePath);
  const CompareSide good = test.Meter();
  CompareSide twice = good;
  twice.cells.insert(twice.cells.begin() + 5, twice.cells[5]);
  CompareSide mixed = good;
  std::swap(mixed.cells[3], mixed.cells[9]);
  for (const CompareSide* bad : {&twice, &mixed}) {
    EXPECT_THROW(Comparison(good, *bad), std::invalid_argument);
    EXPECT_THROW(Comparison(*bad, good), std::invalid_argument);
  }
}

TEST(Comparison, TellsWhatARowLacksAndWhyItDiffers) {
  CompareTest test(kTwoPaths);
  test.meter().holding().PutDouble(0x00EA, 1.0038);
  const CompareSide before = test.Meter();
  test.meter().holding().PutDouble(0x00EA, 1.00380000001);
  test.meter().holding().PutWord(0x0004, 3);  // the flow unit of CH1
  test.meter().holding().PutWord(0x0002, 1);
  test.meter().BreakMemory(sim::Space::Holding, 0x00C0, 0x00C1, 2);
  const Comparison comparison(before, test.Meter());
  EXPECT_EQ(RowAt(comparison, "process.viscosity").state, RowState::kDifferent);
  EXPECT_EQ(RowAt(comparison, "process.viscosity").note,
            "shown alike, but the registers differ: 1.0038 / 1.00380000001");
  EXPECT_EQ(RowAt(comparison, "range.full_scale_1").state, RowState::kDifferent);
  EXPECT_EQ(RowAt(comparison, "range.full_scale_1").note, "the units differ");
  EXPECT_EQ(RowAt(comparison, "display.item_1").state, RowState::kUnread);
  EXPECT_EQ(RowAt(comparison, "display.item_1").note, "right: [ADDRESS ERROR(02H)]");
}

// The same code is another unit in another unit system; a barrel is a barrel in both.
TEST(Comparison, CodesAreComparedAsWhatTheyMean) {
  CompareTest metric({"metric", kFull, 0, 0});
  CompareTest english({"English", kFull, 0, 1});
  for (CompareTest* test : {&metric, &english}) {
    for (const int kind : {0x0002, 0x138A})
      test->meter().holding().PutWord(static_cast<std::uint32_t>(kind), 1);
    test->meter().holding().PutWord(0x0004, 8);   // m3/h and ft3/h
    test->meter().holding().PutWord(0x138C, 14);  // BBL/h
  }
  const Comparison comparison(metric.Meter(), english.Meter());
  EXPECT_EQ(RowAt(comparison, "range.unit", 0).state, RowState::kDifferent);
  EXPECT_EQ(RowAt(comparison, "range.unit", 0).note, "the units differ");
  EXPECT_EQ(RowAt(comparison, "range.unit", 1).state, RowState::kEqual);
  EXPECT_EQ(RowAt(comparison, "range.full_scale_1", 1).state, RowState::kEqual);
}

// --- parameter files

class ParameterFile : public testing::Test {
 protected:
  ParameterFile() {
    test.meter().holding().PutWord(0x0100, 0);
    auto& slots = test.app().slots;
    slots.At("PROCESS SETTING", "OUTER_DIAMETER_Data") = "60.5";
    slots.At("PROCESS SETTING", "KIND_OF_FLUID_Data") = "3";
    slots.At("RANGE", "FULL_SCALE1_Data") = "12.5";
    slots.At("RANGE", "FULL_SCALE1_Unit") = "[m3/h]";
    slots.At("RANGE", "RANGE_UNIT_Data") = "8";
    slots.At("RANGE", "RANGE_KIND_Data") = "1";
    test.app().state.RangeChannel = 1;
  }
  CompareSide Side() {
    EXPECT_EQ(SaveParameterFile(test.app(), "/data/a.ini"), FileError::kGood);
    const FileSide file = SideOfFile(test.app(), "/data/a.ini");
    EXPECT_EQ(file.error, FileError::kGood);
    return file.side;
  }
  PageSlots& slots() { return test.app().slots; }

  CompareTest test{kTwoPaths};
};

TEST_F(ParameterFile, TextsAreJudgedAtTheResolutionOfTheRegister) {
  const CompareSide side = Side();
  EXPECT_EQ(side.Find(At("process.outer_diameter"))->raw, (std::vector<std::uint8_t>{0, 0, 0x17, 0xA2}));
  EXPECT_EQ(side.Find(At("process.outer_diameter"))->unit, "mm");
  EXPECT_EQ(side.Find(At("process.fluid"))->raw, (std::vector<std::uint8_t>{0, 3}));
  EXPECT_EQ(side.Find(At("range.full_scale_1", 1))->unit, "m3/h") << "of the channel that the page showed";
  EXPECT_EQ(side.Find(At("range.full_scale_1", 0)), nullptr);
  EXPECT_EQ(side.Find(At("process.pipe_material")), nullptr) << "an empty entry is no value";
  test.meter().holding().PutLong(0x00D2, 6050);
  test.meter().holding().PutWord(0x0100, 0);
  EXPECT_EQ(RowAt(Comparison(side, test.Meter()), "process.outer_diameter").state, RowState::kEqual)
      << "60.5, 60.50";
}

TEST_F(ParameterFile, WhatNoRegisterCanHoldIsTold) {
  const struct {
    const char* section;
    const char* key;
    const char* text;
    const char* name;
    const char* problem;
  } cases[] = {
      {"PROCESS SETTING", "OUTER_DIAMETER_Data", "12,5", "process.outer_diameter",
       "a comma is not taken: no grouping, and a point before the decimals"},
      {"TOTAL", "TOTAL_MODE_Data", "1.5", "total.mode", "the entries are: START, STOP, TOTAL RESET"},
      {"PROCESS SETTING", "PIPE_S_V_Data", "40000", "process.pipe_sound_velocity",
       "the meter's register holds -32768 to 32767"},
      {"TOTAL", "TOTAL_MODE_Data", "5", "total.mode", "the entries are: START, STOP, TOTAL RESET"},
      {"TOTAL", "TOTAL_MODE_Data", "on", "total.mode", "the entries are: START, STOP, TOTAL RESET"},
  };
  for (const auto& c : cases) {
    slots().At(c.section, c.key) = c.text;
    const CompareSide side = Side();
    EXPECT_EQ(side.Find(At(c.name))->problem, c.problem) << c.text;
    const Comparison comparison(side, test.Meter());
    EXPECT_EQ(RowAt(comparison, c.name).state, RowState::kUnread);
    EXPECT_EQ(RowAt(comparison, c.name).note, std::string("left: ") + c.problem);
  }
}

TEST_F(ParameterFile, AChannelBeyondItsNumberIsToldAndTheUnitSystemIsTheFiles) {
  EXPECT_TRUE(Side().remarks.empty());
  for (const auto& [channel, remarks] :
       {std::pair("32767", Texts{}), std::pair("-32769", Texts{"RANGE/CHANNEL = -32769"}),
        std::pair("32768", Texts{"RANGE/CHANNEL = 32768"})}) {
    test.Files()["/data/b.ini"] = std::string("[SYSTEM]\nUNIT_FLAG=1\n[RANGE]\nCHANNEL=") + channel +
                                  "\n[PROCESS SETTING]\nOUTER_DIAMETER_Data=2.5\n";
    const CompareSide side = SideOfFile(test.app(), "/data/b.ini").side;
    EXPECT_EQ(side.remarks, remarks);
    EXPECT_EQ(side.Find(At("process.outer_diameter"))->unit, "inch");
  }
}

// The captions beside the values say in which unit they were written down.
TEST_F(ParameterFile, ItsOwnUnitsCount) {
  slots().At("PROCESS SETTING", "OUTER_DIAMETER_Data") = "2.3819";
  slots().At("PROCESS SETTING", "OUTER_DIAMETER_Unit") = "[inch]";
  const CompareSide side = Side();
  const SideCell& cell = *side.Find(At("process.outer_diameter"));
  EXPECT_EQ(cell.raw, (std::vector<std::uint8_t>{0, 0, 0x5D, 0x0B})) << "23819";
  EXPECT_EQ(cell.unit, "inch");
  EXPECT_EQ(cell.unit_flag, 1);
}

TEST_F(ParameterFile, TheSecondThermalFullScaleIsNotTakenFromTheKeyThatRepeatsTheFirst) {
  slots().At("RANGE", "H_FULL_SCALE1_Data") = "600";
  slots().At("RANGE", "H_FULL_SCALE2_Data") = "600";
  const CompareSide side = Side();
  EXPECT_NE(side.Find(At("range.thermal_full_scale_1")), nullptr);
  EXPECT_EQ(side.Find(At("range.thermal_full_scale_2")), nullptr);
}

TEST_F(ParameterFile, OtherFilesAreNone) {
  test.Files()["/data/VLT.ini"] = "[RANGE]\r\nRANGE_KIND_Data=1\r\n[COMM]\r\nPORT=1\r\n";
  test.Files()["/data/empty.txt"] = "";
  test.Files()["/data/half.txt"] = "Veltrano3 snapshot 1\nid_number\t1\n";
  for (const char* file : {"/data/VLT.ini", "/data/empty.txt", "/data/half.txt"}) {
    EXPECT_EQ(SideOfFile(test.app(), file).error, FileError::kOther) << file;
  }
  EXPECT_EQ(SideOfFile(test.app(), "/data/none.txt").error, FileError::kMissing);
}

// --- from one meter to another

struct Fits {
  const char* name;
  int index;
  int from_unit_system;
  const char* typed;  // at the source, in its unit
  const char* there;  // what the meter would show, or the reason
};

SharedState FactsOf(int unit_system, int path_mode = 0, int spec_class = 0) {
  SharedState facts;
  facts.LangOffset = 5000;
  facts.ModelCode = "M627";
  facts.UnitFlag = unit_system;
  facts.PathMode = path_mode;
  facts.SpecClass = spec_class;
  facts.RangeKind = {1, 1, 1};
  facts.RangeUnit = {8, 8, 8};  // m3/h, ft3/h
  facts.TotalUnit = {6, 6, 6};  // BBL
  return facts;
}

SideCell CellOf(const char* name, int index, const SharedState& facts, const std::string& text) {
  const ParameterPlace place = At(name, index);
  SideCell cell{.place = place,
                .raw = EncodeValue(*place.row, facts, text).bytes,
                .text = text,
                .unit = UnitTextAt(place, facts, 0),
                .unit_flag = facts.UnitFlag,
                .problem = {}};
  EXPECT_FALSE(cell.raw.empty()) << name << " " << text;
  return cell;
}

std::string Told(const Conversion& conversion, const char* name, const SharedState& to) {
  if (conversion.raw.empty()) return conversion.reason;
  return ValueText(*FindParameter(name), to, conversion.raw);
}

TEST(Conversion, TakesAValueOverOnlyWhenItIsExactThere) {
  const Fits cases[] = {
      {"process.outer_diameter", 0, 0, "50.80", "2.0000"},
      {"process.outer_diameter", 0, 0, "60.50", "60.50 mm has no exact value in the meter's unit inch"},
      {"process.outer_diameter", 1, 1, "2.0000", "50.80"},
      {"process.outer_diameter", 0, 1, "2.3819", "2.3819 inch has no exact value in the meter's unit mm"},
      {"process.fluid_sound_velocity", 0, 0, "1524", "5000"},
      {"process.fluid_sound_velocity", 0, 0, "1482", "1482 m/s has no exact value in the meter's unit ft/s"},
      {"process.pipe_sound_velocity", 0, 0, "15240", "15240 m/s has no exact value in the meter's unit ft/s"},
      {"total.rate", 0, 0, "2.5", "2.5"},
      {"range.hysteresis", 0, 0, "1.25", "1.25"},
      {"range.unit", 0, 0, "m3/h", "this meter does not offer m3/h in its mode"},
      {"range.unit", 0, 0, "BBL/d", "BBL/d"},
      {"total.mode", 0, 0, "STOP", "STOP"},
      {"total.mode", 0, 0, "TOTAL RESET", "it would reset the totals: never sent with others"},
      {"system.specification", 0, 0, "0182", "it would clear the meter's memory: never sent with others"},
      {"maintenance.do_check", 0, 0, "0",
       "it would put the meter into its test state: never sent with others"},
      {"process.sensor_spacing", 0, 0, "12.34", "the meter works it out itself"},
  };
  for (const Fits& c : cases) {
    const SharedState from = FactsOf(c.from_unit_system);
    const SharedState to = FactsOf(1 - c.from_unit_system);
    const Conversion conversion = ConvertFor(CellOf(c.name, c.index, from, c.typed), from, to);
    EXPECT_EQ(Told(conversion, c.name, to), c.there) << c.name << " " << c.typed;
  }
}

TEST(Conversion, FlowsHeatAndTemperaturesGoByTheirUnits) {
  SharedState from = FactsOf(0);
  SharedState to = FactsOf(0);
  to.RangeUnit[0] = 1;  // L/min
  to.TempUnit = 2;      // F
  to.HeatFlowUnit = 5;  // 3.6 MJ an hour
  const struct {
    const char* name;
    const char* typed;
    const char* there;
  } cases[] = {{"range.full_scale_1", "15", "250"},
               {"heat.supply_temperature", "45", "113.00"},
               {"heat.hysteresis", "5", "9.00"},
               {"range.thermal_full_scale_1", "36", "10"}};
  for (const auto& c : cases) {
    const Conversion conversion = ConvertFor(CellOf(c.name, 0, from, c.typed), from, to);
    EXPECT_EQ(Told(conversion, c.name, to), c.there) << c.name;
    EXPECT_TRUE(conversion.converted);
  }
  to.RangeKind[0] = 0;  // a velocity is no flow
  EXPECT_EQ(ConvertFor(CellOf("range.full_scale_1", 0, from, "15"), from, to).reason,
            "15 m3/h has no exact value in the meter's unit m/s");
  to.HeatFlowUnit = -1;
  EXPECT_EQ(ConvertFor(CellOf("range.thermal_full_scale_1", 0, from, "36"), from, to).reason,
            "its unit is not known");
}

// A meter whose first channel goes by the unit, of the first unit system that has it.
SharedState MeterWith(const Parameter& row, const std::string& unit) {
  for (const int unit_system : {0, 1}) {
    SharedState facts = FactsOf(unit_system);
    int& code = row.unit == UnitKind::kFlow    ? facts.RangeUnit[0]
                : row.unit == UnitKind::kTotal ? facts.TotalUnit[0]
                                               : facts.HeatFlowUnit;
    for (code = 0; code < 18; ++code) {
      if (UnitTextAt({&row, 0}, facts, 0) == unit) return facts;
    }
  }
  ADD_FAILURE() << unit;
  return {};
}

TEST(Conversion, TheSameAmountStandsInEveryUnit) {
  const struct {
    const char* name;
    Texts amounts;
  } cases[] = {
      {"range.full_scale_1",
       {"1 m3/s", "60 m3/min", "3600 m3/h", "86400 m3/d", "86.4 km3/d", "0.0864 Mm3/d", "1000 L/s",
        "60000 L/min", "3600000 L/h", "86400000 L/d", "86400 kL/d", "86.4 ML/d"}},
      {"range.full_scale_1",
       {"0.158987294928 m3/s", "60 BBL/min", "3600 BBL/h", "86400 BBL/d", "86.4 kBBL/d", "0.0864 MBBL/d",
        "42 gal/s", "2520 gal/min", "151200 gal/h", "3628800 gal/d", "3628.8 kgal/d", "3.6288 Mgal/d",
        "1 BBL/s"}},
      {"range.full_scale_1",
       {"28.316846592 L/s", "60 ft3/min", "3600 ft3/h", "86400 ft3/d", "86.4 kft3/d", "0.0864 Mft3/d",
        "1 ft3/s"}},
      {"total.rate", {"1000000 mL", "1000 L", "0.001 km3", "0.000001 Mm3", "1 m3"}},
      {"total.rate", {"0.158987294928 m3", "1000 mBBL", "0.001 kBBL", "42 gal", "0.042 kgal", "1 BBL"}},
      {"total.rate", {"1233.48183754752 m3", "43560 ft3", "43.56 kft3", "0.04356 Mft3", "1 ACRf"}},
      {"range.thermal_full_scale_1", {"3.6 MJ/h", "0.0036 GJ/h", "0.001 MWh", "1 kWh"}},
      {"range.thermal_full_scale_1", {"0.00105505585262 MJ/h", "0.001 kBTU/h", "0.000001 MBTU/h", "1 BTU/h"}},
  };
  for (const auto& c : cases) {
    const auto read = [&](const std::string& amount) {
      const std::size_t blank = amount.find(' ');
      SharedState meter = MeterWith(*FindParameter(c.name), amount.substr(blank + 1));
      return std::pair(CellOf(c.name, 0, meter, amount.substr(0, blank)), meter);
    };
    for (const std::string& amount : {c.amounts.front(), c.amounts.back()}) {
      const auto [from, source] = read(amount);
      for (const std::string& other : c.amounts) {
        const auto [same, target] = read(other);
        EXPECT_EQ(Told(ConvertFor(from, source, target), c.name, target),
                  ValueText(*same.place.row, target, same.raw))
            << amount << " is " << other;
      }
    }
  }
}

TEST(Conversion, AnotherModelOrModeTakesWhatItHas) {
  const SharedState full = FactsOf(0, kTwoPathsMode);
  const SharedState pipes = FactsOf(0, kTwoPipesMode);
  const SharedState single = FactsOf(0, 0, kSingleChannelModel);
  const SharedState one = FactsOf(0, kOnePathMode);
  const struct {
    const SharedState& to;
    const char* name;
    int index;
    const char* typed;
    const char* there;
  } cases[] = {
      {single, "process.fluid", 0, "WATER", "WATER"},
      {single, "process.fluid", 1, "WATER", "this meter does not have it"},
      {single, "system.calculation", 0, "AVERAGE", "this meter does not have it"},
      {single, "status.function", 0, "ALARM", "ALARM"},
      {single, "status.function", 0, "(14)", "this meter does not offer TOTAL SWITCH (T) in its mode"},
      {pipes, "heat.supply_span", 0, "100", "this meter does not have it"},
      {pipes, "heat.flow_unit", 0, "GJ/h", "GJ/h"},
      {pipes, "system.ao1_source", 0, "CH2:FLOW RATE", "CH2:FLOW RATE"},
      {one, "system.ao1_source", 0, "CH1:THERMAL FLOW", "CH1:THERMAL FLOW"},
      {pipes, "system.ao1_source", 0, "CH1:THERMAL FLOW",
       "this meter does not offer CH1:THERMAL FLOW in its mode"},
      {pipes, "range.kind", 2, "VELOCITY", "this meter does not offer VELOCITY in its mode"},
      {full, "status.function", 0, "(14)", "TOTAL SWITCH (T)"},
      {one, "status.function", 0, "(19)", "this meter does not offer RESERVE in its mode"},
      {one, "status.function", 1, "(19)", "RESERVE"},
      {single, "status.function", 0, "(10)", "this meter does not offer H:TOTAL PULSE(T) in its mode"},
      {pipes, "status.function", 0, "(9)", "-:FLOW DIRECTION"},
      {single, "display.item_1", 0, "(7)", "this meter does not offer H:TOTAL(THERMAL) in its mode"},
      {single, "display.item_1", 0, "(6)", "-TOTAL PULSE"},
      {pipes, "range.kind", 2, "FLOW RATE", "FLOW RATE"},
  };
  for (const auto& c : cases) {
    const Conversion conversion = ConvertFor(CellOf(c.name, c.index, full, c.typed), full, c.to);
    EXPECT_EQ(Told(conversion, c.name, c.to), c.there) << c.name << " " << c.typed;
  }
}

// --- exports

TEST(Export, CsvHasEveryRowAndItsStateAndTheCounts) {
  CompareTest test(kTwoPaths);
  CompareSide left = test.Meter();
  test.meter().holding().PutWord(0x001C, 77);
  left.remarks = {"line 3: \"odd\", not taken"};
  const Comparison comparison(left, test.Meter());
  const Texts lines = Lines(ComparisonCsv(comparison, "2026/11/24 10:00:00"));
  EXPECT_EQ(lines.size(), comparison.All() + 7)
      << "title, two sides, a remark, counts, heads, and the last end";
  EXPECT_EQ(lines[2], "Left,\"line 3: \"\"odd\"\", not taken\"\r");
  EXPECT_EQ(lines[4],
            "\"All 225: equal 224, different 1, only left 0, only right 0, could not be read 0\"\r");
  const auto row = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.find(",different,") != std::string::npos;
  });
  ASSERT_NE(row, lines.end());
  EXPECT_EQ(*row, "RANGE,CH1,BURNOUT TIMER,4509,sec,77,sec,different,\r");
  const auto sign = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.starts_with("DISPLAY,,DISPLAY 1 ROW");
  });
  EXPECT_EQ(sign->find(",+"), std::string::npos) << "no formula: " << *sign;
}

TEST(Export, SheetsListTheChosenStatesPageByPage) {
  CompareTest test(kTwoPaths);
  CompareSide left = test.Meter();
  left.remarks.assign(100, "a line that was not taken");
  test.Fill(8);
  const Comparison comparison(left, test.Meter());
  const ComparisonSheetParts all{.stamp = "now",
                                 .program = "Veltrano3",
                                 .shown = {RowState::kEqual, RowState::kDifferent, RowState::kUnread}};
  const std::vector<Sheet> pages = ComparisonSheets(comparison, all);
  ASSERT_GT(pages.size(), 3u);
  EXPECT_EQ(std::count_if(pages[0].Items().begin(), pages[0].Items().end(),
                          [&](const SheetItem& item) { return item.text == left.remarks[0]; }),
            54)
      << "a full page of remarks";
  std::size_t rows = 0;
  for (const Sheet& page : pages) {
    for (const SheetItem& item : page.Items()) {
      if (item.kind != SheetKind::kText) continue;
      EXPECT_GE(item.points[0].x, 10);
      EXPECT_LE(item.points[0].y, 290) << item.text;
      const bool state = item.text.starts_with("equal") || item.text.starts_with("different");
      rows += state ? 1 : 0;
    }
  }
  EXPECT_EQ(rows, comparison.All());
  const auto said = [](const Sheet& page, const std::string& text) {
    return std::any_of(page.Items().begin(), page.Items().end(),
                       [&](const SheetItem& item) { return item.text == text; });
  };
  EXPECT_TRUE(said(pages[1], SummaryText(comparison, Language::kEnglish)));
  EXPECT_TRUE(
      said(pages.back(), "Page " + std::to_string(pages.size()) + " of " + std::to_string(pages.size())));
  const ComparisonSheetParts none{.stamp = "now", .program = "Veltrano3", .shown = {RowState::kUnread}};
  EXPECT_EQ(ComparisonSheets(comparison, none).size(), 2u) << "remarks stand there whatever is listed";
}

}  // namespace
}  // namespace vlt::test
