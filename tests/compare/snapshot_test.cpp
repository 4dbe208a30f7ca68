// SPDX-License-Identifier: GPL-3.0-or-later
// Snapshots read from a meter, written, and read again.
#include <clocale>
#include <locale>
#include <set>

#include "compare_fixture.h"
#include "meter/value_text.h"
#include "state/tested_meters.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

SharedState Speaker(int lang_offset = 5000) {
  SharedState speaker;
  speaker.LangOffset = lang_offset;
  speaker.ModelCode = "M627";
  return speaker;
}

TEST(Snapshot, AsksForEachBlockOnceAndForNoneThatTheMeterHasNot) {
  const Texts system = {"04 00 86 00 0B", "03 01 00 00 03", "03 01 48 00 01", "03 00 3E 00 01"};
  const Texts full = {
      "03 03 E8 00 01", "03 03 EA 00 01", "03 03 EC 00 01", "03 03 EE 00 01", "03 00 D0 00 12",
      "04 00 80 00 03", "03 14 58 00 12", "04 14 08 00 03", "03 04 B4 00 32", "03 00 00 00 20",
      "03 03 F0 00 08", "03 13 88 00 20", "03 1B 5A 00 15", "03 00 40 00 0D", "03 04 00 00 08",
      "03 13 C8 00 0D", "03 1B 98 00 0D", "03 04 A8 00 04", "03 00 5A 00 30", "03 04 30 00 34",
      "03 04 10 00 10", "03 01 8E 00 0F", "03 14 8E 00 0F", "03 00 C0 00 06", "03 04 B0 00 02",
      "03 01 42 00 02", "03 01 54 00 07", "03 01 4A 00 02", "03 01 76 00 01"};
  const Texts single = {"03 00 D0 00 12", "04 00 80 00 03", "03 00 00 00 20",
                        "03 00 40 00 0D", "03 00 5A 00 20", "03 01 8E 00 0F",
                        "03 00 C0 00 06", "03 01 42 00 02", "03 01 54 00 07"};
  for (const bool is_full : {true, false}) {
    CompareTest test(is_full ? kOnePath : kSingleModel);
    EXPECT_TRUE(test.Read().AllKnown());
    Texts expected = system;
    expected.insert(expected.end(), (is_full ? full : single).begin(), (is_full ? full : single).end());
    EXPECT_EQ(test.Requests(), expected);
  }
}

TEST(Snapshot, HasEveryParameterOfTheShapeInItsPlace) {
  const std::size_t rows[] = {225, 225, 204, 87};
  for (std::size_t i = 0; i < std::size(kShapes); ++i) {
    SCOPED_TRACE(kShapes[i].name);
    CompareTest test(kShapes[i]);
    const Snapshot snapshot = test.Read();
    EXPECT_EQ(snapshot.rows.size(), rows[i]);
    EXPECT_TRUE(std::is_sorted(snapshot.rows.begin(), snapshot.rows.end(), [](const auto& a, const auto& b) {
      return InCatalogueOrder(a.place, b.place);
    }));
    for (const SnapshotRow& row : snapshot.rows) {
      const auto held =
          row.place.row->function == ReadFunction::kInput
              ? test.meter().input().Read(static_cast<std::uint32_t>(row.place.Address()),
                                          static_cast<std::uint32_t>(2 * row.place.row->Words()))
              : test.meter().holding().Read(static_cast<std::uint32_t>(row.place.Address()),
                                            static_cast<std::uint32_t>(2 * row.place.row->Words()));
      EXPECT_TRUE(row.raw == std::vector<std::uint8_t>(held.begin(), held.end())) << row.place.row->name;
    }
  }
}

TEST(Catalogue, NamesOfRowsAreDistinctWithinTheirGroup) {
  for (const int lang_offset : {0, 5000}) {
    for (const ParameterGroup& group : ParameterGroups()) {
      std::set<std::string> titles;
      for (const Parameter& row : group.rows) {
        EXPECT_TRUE(titles.insert(RowTitle(row, LanguageOf(lang_offset))).second) << row.name;
        const bool computed = row.write == WriteWith::kNothing;
        const auto& order = group.write_order;
        EXPECT_EQ(std::count(order.begin(), order.end(), &row), computed ? 0 : 1) << row.name;
      }
    }
  }
}

// Decimal commas and grouped digits, whatever locales the machine has.
struct Commas : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(SnapshotFile, IsTheSameInEveryLanguageAndLocaleAndComesBackWhole) {
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.name);
    CompareTest english(shape);
    CompareTest japanese(shape, 0);
    const Snapshot snapshot = english.Read();
    const std::string text = SnapshotText(snapshot);
    const std::locale before = std::locale::global(std::locale(std::locale(), new Commas));
    EXPECT_EQ(SnapshotText(japanese.Read()), text);
    for (const int lang_offset : {0, 5000}) {
      const SnapshotFile file = ParseSnapshot(text, Speaker(lang_offset));
      EXPECT_TRUE(file.is_snapshot);
      for (const SnapshotRemark& remark : file.remarks)
        ADD_FAILURE() << RemarkText(remark, Language::kEnglish);
      EXPECT_EQ(SnapshotText(file.snapshot), text);
      EXPECT_EQ(file.snapshot.rows.size(), snapshot.rows.size());
    }
    std::locale::global(before);
    EXPECT_EQ(ParseSnapshot(text, Speaker()).snapshot.identity, snapshot.identity);
    MeterIdentity told = japanese.Read().identity;
    told.date = snapshot.identity.date;
    EXPECT_EQ(ParseSnapshot(text, Speaker(0)).snapshot.identity, told);
  }
}

TEST(SnapshotFile, DiffersExactlyWhereTheMetersDiffer) {
  CompareTest test(kTwoPipes);
  const Texts before = Lines(SnapshotText(test.Read()));
  test.meter().holding().PutWord(0x001C, 77);     // burnout timer of CH1
  test.meter().holding().PutDouble(0x13CC, 2.5);  // total rate of CH2
  const Texts after = Lines(SnapshotText(test.Read()));
  ASSERT_EQ(before.size(), after.size());
  Texts changed;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] != after[i])
      changed.push_back(after[i].substr(0, after[i].find('\t', after[i].find('\t') + 1)));
  }
  EXPECT_EQ(changed, (Texts{"date\t2026/11/24 10:00:04", "range.burnout_timer\tCH1", "total.rate\tCH2"}));
}

TEST(Snapshot, WhatCannotBeReadIsUnreadWithItsReason) {
  CompareTest test(kTwoPaths);
  test.meter().BreakMemory(sim::Space::Holding, 0x1388, 0x1389, 2);  // range of CH2
  test.meter().BreakMemory(sim::Space::Holding, 0x00C0, 0x00C1, 0);  // display, silently
  test.meter().BreakMemory(sim::Space::Holding, 0x0040, 0x0041, 2);  // total, and behind it
  test.meter().BreakMemory(sim::Space::Holding, 0x005A, 0x005B, 0);  // status
  const Snapshot snapshot = test.Read();
  EXPECT_FALSE(snapshot.AllKnown());
  EXPECT_EQ(snapshot.Find(At("range.type", 1))->unread, "[ADDRESS ERROR(02H)]");
  EXPECT_EQ(snapshot.Find(At("display.backlight"))->unread, "[NO RESPONSE ERROR]");
  EXPECT_EQ(snapshot.Find(At("status.function"))->unread, "[NO RESPONSE ERROR]")
      << "not that of the block before";
  EXPECT_TRUE(snapshot.Find(At("range.type", 0))->Known());
  EXPECT_TRUE(snapshot.Find(At("display.channel_1"))->Known()) << "the other block of the group";
  // The file keeps it so.
  const std::string text = SnapshotText(snapshot);
  EXPECT_NE(text.find("range.type\tCH2\t3:138E\t-\t[ADDRESS ERROR(02H)]\t\n"), std::string::npos);
  const SnapshotFile file = ParseSnapshot(text, Speaker());
  EXPECT_TRUE(file.remarks.empty());
  EXPECT_EQ(file.snapshot.Find(At("range.type", 1))->unread, "[ADDRESS ERROR(02H)]");
  EXPECT_EQ(SnapshotText(file.snapshot), text);
}

// A value without its unit is no value: what the session knew of units before does not count.
TEST(Snapshot, AValueWhoseUnitIsNotKnownIsNotKnown) {
  const struct {
    std::uint32_t broken;
    const char* unknown;
    int index;
    const char* known;
  } cases[] = {{0x0100, "process.outer_diameter", 0, "range.burnout_timer"},
               {0x0100, "range.unit", 2, "range.type"},
               {0x0002, "status.flow_switch_high", 0, "status.contact_action"},
               {0x04B4, "range.thermal_full_scale_1", 0, "range.type"},
               {0x04B4, "status.thermal_switch_high", 2, "status.thermal_switch"},
               {0x003E, "details.send_count", 1, "details.send_pattern"}};
  for (const auto& c : cases) {
    CompareTest test(kTwoPaths);
    test.meter().holding().PutWord(0x04A8, 0);  // DO1 follows CH1
    test.meter().BreakMemory(sim::Space::Holding, c.broken, c.broken + 1, 2);
    const Snapshot snapshot = test.Read();
    EXPECT_EQ(snapshot.Find(At(c.unknown, c.index))->unread, "its unit could not be read") << c.unknown;
    EXPECT_EQ(snapshot.Find(At(c.unknown, c.index))->value, "");
    const int index = FindParameter(c.known)->location == Location::kMeter ? 0 : 1;
    EXPECT_TRUE(snapshot.Find(At(c.known, index))->Known()) << c.known;
  }
}

TEST(Snapshot, FindsAMeterInItsTestState) {
  CompareTest test(kOnePath);
  for (const std::uint32_t check : {0x0154u, 0x0156u, 0x0158u, 0x015Cu, 0x0176u}) {
    test.meter().holding().PutWord(check, 0);
  }
  test.Read();
  EXPECT_FALSE(IsAnyMeterInTest(test.app()));
  test.meter().holding().PutWord(0x0156, 100);
  test.Read();
  EXPECT_TRUE(IsAnyMeterInTest(test.app()));
}

TEST(Snapshot, TellsHowFarItIsAndCanBeStopped) {
  CompareTest test(kTwoPipes);
  Texts told;
  const SnapshotResult result = ReadSnapshot(
      test.app(), {.began =
                       [&](int number, int count, const std::string& what) {
                         told.push_back(std::to_string(number) + "/" + std::to_string(count) + " " + what);
                       },
                   .stop = [&] { return told.size() == 4; }});
  EXPECT_TRUE(result.stopped);
  EXPECT_EQ(told, (Texts{"1/18 SYSTEM", "2/18 PROCESS SETTING CH1", "3/18 PROCESS SETTING CH2",
                         "4/18 ENERGY MODE"}));
  EXPECT_TRUE(result.snapshot.Find(At("process.fluid", 1))->Known());
  EXPECT_EQ(result.snapshot.Find(At("details.send_pattern", 1))->unread, "the reading was stopped");
}

// --- files that are not as they should be

class BadFile : public testing::Test {
 protected:
  BadFile() : text_(SnapshotText(test_.Read())) {}

  void Replace(const std::string& what, const std::string& by) {
    const std::size_t at = text_.find(what);
    ASSERT_NE(at, std::string::npos) << what;
    text_.replace(at, what.size(), by);
  }
  int LineOf(const std::string& begin) const {
    const Texts lines = Lines(text_);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (lines[i].starts_with(begin)) return static_cast<int>(i) + 1;
    }
    return 0;
  }
  SnapshotFile Parse() const { return ParseSnapshot(text_, Speaker()); }
  std::string Told() const {
    std::string told;
    for (const SnapshotRemark& remark : Parse().remarks)
      told += RemarkText(remark, Language::kEnglish) + "\n";
    return told;
  }

  CompareTest test_{kOnePath};
  std::string text_;
};

TEST_F(BadFile, ALineThatCannotBeTakenIsToldByItsNumberAndNotTaken) {
  const struct {
    const char* line;
    const char* what;
    const char* by;
    const char* reason;
  } cases[] = {
      {"range.type\tCH2", "range.type\tCH2\t3:138E", "range.type\tCH2\t3:1390",
       "it is not the register of this parameter"},
      {"range.type\tCH2", "range.type\tCH2\t3:138E\t", "range.type\tCH2\t3:138E\t00",
       "it is not of the form of a parameter"},
      {"range.type\tCH7", "range.type\tCH2", "range.type\tCH7", "it is not of the form of a parameter"},
      {"range.type\tCH2", "range.type\tCH2\t3:138E\t", "range.type\tCH2\t3:138E\tzz",
       "it is not of the form of a parameter"},
      {"process.outer_diameter\tCH1", "\tmm", "\tinch",
       "its value or unit is not what its register contents say"},
      {"range.burnout_timer\tCH1", "range.burnout_timer\tCH1\t3:001C\t1",
       "range.burnout_timer\tCH1\t3:001C\t2", "its value or unit is not what its register contents say"},
  };
  const std::string good = text_;
  for (const auto& c : cases) {
    text_ = good;
    Replace(c.what, c.by);
    const SnapshotFile file = Parse();
    ASSERT_GE(file.remarks.size(), 1u) << c.by;
    EXPECT_EQ(RemarkText(file.remarks[0], Language::kEnglish),
              "line " + std::to_string(LineOf(c.line)) + ": " + c.reason);
    EXPECT_EQ(file.snapshot.rows.size() + 1, test_.Read().rows.size()) << c.by;
  }
}

TEST_F(BadFile, UnknownNamesAreToldAndKept) {
  const std::string line = "range.colour\tCH1\t3:7000\t0001\tred\t";
  text_ += line + "\n";
  const SnapshotFile file = Parse();
  ASSERT_EQ(file.remarks.size(), 1u);
  EXPECT_EQ(file.remarks[0].kind, SnapshotRemark::Kind::kUnknownName);
  EXPECT_NE(SnapshotText(file.snapshot, file.remarks).find(line), std::string::npos);
}

TEST_F(BadFile, WhatIsTwiceMissingOrOfAnotherShapeIsTold) {
  const std::size_t at = text_.find("range.type\tCH2");
  const std::string line = text_.substr(at, text_.find('\n', at) - at + 1);
  text_ += line;
  EXPECT_EQ(Told(), "line " + std::to_string(Lines(text_).size() - 1) +
                        ": the parameter stands in an earlier line too\n");
  Replace(line, "");
  EXPECT_EQ(Told(), "") << "once again each stands once";
  Replace(line, "");
  EXPECT_EQ(Told(), "RANGE CH2 RANGE TYPE is not in the file\n");
  Replace("model\tfull", "model\tsingle");
  EXPECT_NE(Told().find("line 9: the line of the head is not what its parameter says"), std::string::npos);
  Replace("3:03E8\t0000\t1PATH", "3:03E8\t0002\t2PIPES");
  const std::string told = Told();
  EXPECT_NE(told.find("line " + std::to_string(LineOf("heat.mode")) +
                      ": a meter of this model and path mode does not have it"),
            std::string::npos);
}

TEST_F(BadFile, AHeadThatIsNotThereOrContradictsIsTold) {
  Replace("id_number\t", "id_number\t9");
  EXPECT_NE(Told().find("line 3: the line of the head is not what its parameter says"), std::string::npos);
  Replace("version\t", "colour\t");
  const std::string told = Told();
  EXPECT_NE(told.find("it is not of the form of a parameter"), std::string::npos);
  EXPECT_NE(told.find("the head has no line version"), std::string::npos);
  Replace("model\tfull\n", "");
  EXPECT_FALSE(Parse().is_snapshot);
  for (const char* other : {"", "[COMM]\nPORT=1\n", "Veltrano3 snapshot 2\nmodel\tfull\n"}) {
    EXPECT_FALSE(ParseSnapshot(other, Speaker()).is_snapshot) << other;
  }
}

// Nothing that stands in a file makes the reader fall.
TEST_F(BadFile, CutAndSpoiltFilesAreReadAsFarAsTheyGo) {
  const std::string good = text_;
  for (std::size_t length = 0; length < good.size(); length += 97) {
    text_ = good.substr(0, length);
    const SnapshotFile file = Parse();
    EXPECT_TRUE(!file.is_snapshot || !file.remarks.empty()) << "cut behind " << length;
  }
  for (std::size_t at = 0; at < good.size(); at += 31) {
    text_ = good;
    text_[at] = '\t';
    EXPECT_NO_THROW(Parse()) << at;
  }
}

TEST(ValueText, TypedValuesAndCodesByWordAndNumberAreTaken) {
  SharedState facts = Speaker();
  const struct {
    const char* name;
    const char* text;
    ValueFault fault;
    std::vector<std::uint8_t> bytes;
  } cases[] = {
      {"process.outer_diameter", "60.5", ValueFault::kNone, {0, 0, 0x17, 0xA2}},
      {"process.outer_diameter", "sixty", ValueFault::kNoNumber, {}},
      {"range.hysteresis", "400", ValueFault::kOutOfRange, {}},
      {"range.kind", "velocity", ValueFault::kNone, {0, 0}},
      {"range.kind", "1", ValueFault::kNone, {0, 1}},
      {"range.kind", "2", ValueFault::kNoSuchCode, {}},
      {"range.kind", "(2)", ValueFault::kNone, {0, 2}},
      {"details.send_count", "8", ValueFault::kNone, {0, 1}},
      {"process.sensor_type", "RESERVE", ValueFault::kNoSuchCode, {}},
      {"process.sensor_type", "1", ValueFault::kNone, {0, 1}},
      {"process.fluid", "水", ValueFault::kNone, {0, 0}},
      {"display.item_1", "+TOTAL PULSE", ValueFault::kNone, {0, 4}},
      {"display.lights_out_time", "12", ValueFault::kNone, {0, 12}},
      {"system.id_number", "0042", ValueFault::kNone, {0, 42}},
  };
  for (const auto& c : cases) {
    const EncodedValue encoded = EncodeValue(*FindParameter(c.name), facts, c.text);
    EXPECT_EQ(encoded.fault, c.fault) << c.name << " " << c.text;
    EXPECT_EQ(encoded.bytes, c.bytes) << c.name << " " << c.text;
  }
  EXPECT_EQ(ValueFaultText(*FindParameter("range.kind"), facts, ValueFault::kNoSuchCode),
            "the entries are: VELOCITY, FLOW RATE");
}

}  // namespace
}  // namespace vlt::test
