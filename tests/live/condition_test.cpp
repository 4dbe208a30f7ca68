// SPDX-License-Identifier: GPL-3.0-or-later
// The condition tab: what stands in the grid and in the file, and what happens on a bad line.
#include "transit_fixture.h"
#include "values/codecs.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

// A reply's data, row by row.
const char kFirstBlock[] =
    "09 F6 01 B8 "              // 2550, 44.0
    "0C 1C 00 00 "              // 3100, 0.0
    "80 00 FF FF "              // -32768, -0.1
    "05 C8 7F FF "              // 1480, 3276.7
    "00 64 FF 38 "              // 100, -200
    "00 01 86 A0 FF FF FF FF "  // 100.000, -0.001
    "7F FF FF FF 80 00 00 00 "  // 2147483.647, -214748.3648
    "00 00 27 0F 00 00 00 01 "  // 9.999, 0.001
    "00 00 39 D0 00 01 E2 40 "  // 1480.0, 123456
    "00 00 2A F8 FF FF FB 2E "  // 1.1000, -1.234
    "15 7C FF 9C FF FF 08 00 "  // 55.00, -1.00, 65535, 2048
    "FF FF 0B B8";              // -0.01, 30.00

struct Row {
  const char* name;
  const char* symbol;
  const char* unit;
  const char* value;
  const char* zero;  // as the second channel shows it
  bool calculated = false;

  std::string Mark() const { return calculated ? "(CAL .)" : ""; }
  std::string InGrid() const { return name + (*symbol ? "(" + std::string(symbol) + ")" : "") + Mark(); }
  std::string InFile() const { return name + Mark() + "," + symbol + "," + unit + "," + value + "," + zero; }
};
const Row kRows[] = {
    {"WEDGE S.V.", "", "[m/s]", "2550", "0", true},
    {"WEDGE ANGLE", "", "[deg]", "44.0", "0.0", true},
    {"PIPE S.V.", "", "[m/s]", "3100", "0", true},
    {"ANGLE IN PIPE", "", "[deg]", "0.0", "0.0", true},
    {"LINING S.V.", "", "[m/s]", "-32768", "0", true},
    {"ANGLE IN LINING", "", "[deg]", "-0.1", "0.0", true},
    {"FLUID S.V.", "", "[m/s]", "1480", "0", true},
    {"ANGLE IN FLUID", "", "[deg]", "3276.7", "0.0", true},
    {"TOTAL TIME", "T0 C", "[us]", "100", "0", true},
    {"WINDOW OPEN", "Win C", "[us]", "-200", "0", true},
    {"FORWARD TIME", "T1", "[us]", "100.000", "0.000"},
    {"REVERSE TIME", "T2", "[us]", "-0.001", "0.000"},
    {"TOTAL TIME", "T0", "[us]", "2147483.647", "0.000"},
    {"TRANSIT TIME", "DT", "[ns]", "-214748.3648", "0.0000"},
    {"DELAY TIME", "Ta", "[us]", "9.999", "0.000"},
    {"ANGLE IN FLUID", "thf", "[deg]", "0.001", "0.000"},
    {"FLUID S.V.", "Cf", "[m/s]", "1480.0", "0.0"},
    {"REYNOLDS No.", "Re", "", "123456", "0"},
    {"K", "K", "", "1.1000", "0.0000"},
    {"VELOCITY", "V", "[m/s]", "-1.234", "0.000"},
    {"U:SIGNAL POWER", "AGC U", "[%]", "55.00", "0.00"},
    {"D:SIGNAL POWER", "AGC D", "[%]", "-1.00", "0.00"},
    {"U:SIGNAL PEEK", "P/H U", "", "65535", "0"},
    {"D:SIGNAL PEEK", "P/H D", "", "2048", "0"},
    {"U:TRIG. LEVEL", "TRG U", "[%]", "-0.01", "0.00"},
    {"D:TRIG. LEVEL", "TRG D", "[%]", "30.00", "0.00"},
};

std::string BlockReply(const std::string& data) { return "01 04 48 " + data; }
std::string WordReply(const std::string& word) { return "01 03 02 " + word; }
std::string Zeros() {
  std::string data = "00 00";
  for (int word = 1; word < 36; ++word) data += " 00 00";
  return data;
}

TransitTest Scripted() { return TransitTest({.port = PortKind::kScripted}); }

void Script(TransitTest& t, const std::string& spec, const std::string& path, const std::string& second) {
  t.test.platform.scripted.ReplyChecked(BlockReply(kFirstBlock));
  t.test.platform.scripted.ReplyChecked(WordReply(spec));
  if (!path.empty()) t.test.platform.scripted.ReplyChecked(WordReply(path));
  if (!second.empty()) t.test.platform.scripted.ReplyChecked(BlockReply(second));
}

TEST(Condition, DecodesEachRowOfOneChannel) {
  TransitTest t({.port = PortKind::kScripted});
  t.app().state.UnitFlag = 0;
  t.test.platform.scripted.writes.clear();
  Script(t, "00 B6", "", "");
  ASSERT_TRUE(t.condition().ReadInfButton.Press());
  const Texts& sent = t.test.platform.scripted.writes;
  ASSERT_EQ(sent.size(), 2u) << "a meter of one channel is not asked for its paths";
  EXPECT_EQ(sent[0].substr(0, 17), "01 04 00 30 00 24");
  EXPECT_EQ(sent[1].substr(0, 17), "01 03 01 48 00 01");
  const Grid& grid = t.condition().InfData1Grid;
  EXPECT_EQ((Texts{grid.Cell(0, 0), grid.Cell(0, 1), grid.Cell(0, 2), grid.Cell(0, 3)}),
            (Texts{"Item of Collection", "Unit", "CH1", "CH2"}));
  for (int row = 1; row <= 26; ++row) {
    const Row& expected = kRows[row - 1];
    SCOPED_TRACE(expected.name);
    EXPECT_EQ(grid.Cell(row, 0), expected.InGrid());
    EXPECT_EQ(grid.Cell(row, 1), expected.unit);
    EXPECT_EQ(grid.Cell(row, 2), expected.value);
    EXPECT_EQ(grid.Cell(row, 3), "");
  }
  EXPECT_EQ(grid.ColumnWidth(3), 0);
  EXPECT_EQ(grid.Width(), 7060);
  EXPECT_EQ(t.State(), "Reading of condition was completed ");
  EXPECT_EQ(t.condition().ReadTime, "2026/11/24 10:00:00");
  EXPECT_FALSE(t.app().state.UiLocked);
}

TEST(Condition, FileIsTheseLines) {
  TransitTest t = Scripted();
  Script(t, "00 51", "00 02", Zeros());
  t.condition().ReadInfButton.Press();
  t.app().state.MeasureDir = "/logs";
  t.dialogs().SaveFile("/logs/state.csv");
  ASSERT_TRUE(t.condition().SaveInfButton.Press());
  EXPECT_EQ(t.dialogs().questions.back().title, "Please specify the file name to save");
  EXPECT_EQ(t.dialogs().questions.back().folder, "/logs/");
  Texts expected = {"[TRANSIT TIME]", "<CONDITION>", ",,<CH1>,<CH2>"};
  for (const Row& row : kRows) expected.push_back(row.InFile());
  EXPECT_EQ(t.Lines("/logs/state.csv"), expected);
  // A meter of one channel: one column of values. The file stays as it is when it can't be written.
  Script(t, "00 B6", "", "");
  t.condition().ReadInfButton.Press();
  t.dialogs().SaveFile("/logs/one.csv");
  t.condition().SaveInfButton.Press();
  EXPECT_EQ(t.Lines("/logs/one.csv")[2], ",,<CH1>");
  EXPECT_EQ(t.Lines("/logs/one.csv")[3], "WEDGE S.V.(CAL .),,[m/s],2550");
  t.test.platform.files.FailChange(1, FileError::kFull);
  t.dialogs().SaveFile("/logs/state.csv");
  t.condition().SaveInfButton.Press();
  EXPECT_EQ(t.Lines("/logs/state.csv"), expected);
  EXPECT_NE(t.test.StatusText().find("state.csv"), std::string::npos);
}

}  // namespace
}  // namespace vlt::test
