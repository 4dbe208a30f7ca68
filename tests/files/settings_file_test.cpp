// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/settings_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/test_app.h"

namespace vlt {
namespace {

using namespace std::string_literals;
using test::TestApp;

constexpr const char* kPath = "/app/VLT.ini";

using Texts = std::vector<std::string>;

Texts Split(const std::string& text) {
  Texts parts(1);
  for (const char c : text) {
    if (c == '|') parts.emplace_back();
    if (c != '|') parts.back() += c;
  }
  return parts;
}

// All that LoadSettings sets, in the order of reading.
Texts Settings(const SharedState& s) {
  std::ostringstream all;
  all << s.PortNo << '|' << s.Speed << '|' << s.Parity << '|' << s.StopBits << '|' << s.TransMethod << '|'
      << s.StationNo << '|' << s.RetryNo << '|' << s.UnitFlag << '|' << s.SystemLangFlag << '|' << s.LangFlag
      << '|' << s.UserInfo << '|' << s.ModelCode << '|' << s.MeasureDir << '|' << s.PvCsvDir << '|'
      << s.IniFilePath << '|' << s.VerificationDir << '|' << s.VerificationFile << '|' << s.VerificationNumber
      << '|' << s.VerificationLogo;
  return Split(all.str());
}

// A state that differs from every default.
void Disturb(SharedState& s) {
  for (std::string* text :
       {&s.PortNo, &s.Speed, &s.Parity, &s.StopBits, &s.TransMethod, &s.StationNo, &s.UserInfo, &s.ModelCode,
        &s.MeasureDir, &s.PvCsvDir, &s.IniFilePath, &s.VerificationDir, &s.VerificationFile}) {
    *text = "x";
  }
  s.RetryNo = s.UnitFlag = s.SystemLangFlag = s.LangFlag = s.VerificationNumber = s.VerificationLogo = 7;
}

const Texts kDefaults =
    Split("0|9600|O|1|RS232C|00|3|0|0|0|Standard||c:\\|c:\\|/app//VLT.ini|c:\\|Verification.xls|0|0");

TEST(LoadSettings, WithoutAReadableFileEveryKeyHasItsDefault) {
  const std::pair<FileError, std::string> rows[] = {
      {FileError::kMissing, ""}, {FileError::kNotAFile, ""}, {FileError::kNoPermission, ""},
      {FileError::kGood, ""},    {FileError::kTooLarge, ""}, {FileError::kGood, "\0\xFF=\r[COMM\n"s}};
  for (const auto& [error, content] : rows) {
    TestApp machine;
    if (error == FileError::kGood) machine.platform.files.files[kPath] = content;
    if (error != FileError::kGood && error != FileError::kMissing)
      machine.platform.files.FailPath(kPath, error);
    Disturb(machine.app.state);
    const LoadResult result = LoadSettings(machine.app, BootstrapPath(machine.app), 0);
    EXPECT_EQ(result.file, error);
    EXPECT_TRUE(result.Converted());
    EXPECT_EQ(Settings(machine.app.state), kDefaults);
  }
}

TEST(LoadSettings, EmptyValuesHaveFallbacksOfTheirOwn) {
  TestApp machine;
  machine.platform.files.files[kPath] =
      "[COMM]\nPORT=\nSPEED=\nPARITY=\"\"\nSTOP_BIT=\nTRANS_METHOD=\nSTATION_NO=\nRETRY_NO=\n"
      "[SYSTEM]\nUNIT_FLAG=\nSYSTEM_LANG_FLAG=\nLANG_FLAG=\nUSER_INFO=\nVR=\nINI_FILENAME=\n"
      "[CSVDIR]\nMEASURE_DIR=\nPV_DIR=\n[VERIFICATION]\nDEF_DIR=\nDEF_FILE_XLS=\nDEF_VER_NO=\nLOGO_FLG=\n";
  Disturb(machine.app.state);
  EXPECT_TRUE(LoadSettings(machine.app, kPath, 0).Converted());
  Texts expected = kDefaults;
  expected[14] = "/app/VLT.ini";
  expected[15] = expected[16] = "";
  EXPECT_EQ(Settings(machine.app.state), expected);
}

TEST(LoadSettings, TakesEachKey) {
  const struct {
    std::string section, line;
    std::size_t at;
    std::string expected, stopped_at;
  } rows[] = {
      {"COMM", "PORT=03", 0, "3", ""},
      {"COMM", "PORT=10 ", 0, "10", ""},
      {"COMM", "PORT=11", 0, "x", ""},
      {"COMM", "PORT=99999", 0, "x", ""},
      {"COMM", "PORT=COM3", 0, "x", "COMM/PORT"},
      {"COMM", "RETRY_NO=5 times", 6, "5", ""},
      {"COMM", "RETRY_NO=none", 6, "0", ""},
      {"COMM", "RETRY_NO=32768", 6, "7", "COMM/RETRY_NO"},
      {"COMM", "RETRY_NO=4 \t", 6, "4", ""},
      {"COMM", "SPEED=19200\0junk"s, 1, "19200", ""},
      {"COMM", "PARITY=\0"s, 2, "", ""},
      {"SYSTEM", "LANG_FLAG=1", 9, "1", ""},
      {"SYSTEM", "USER_INFO=Factory", 10, "Factory", ""},
      {"SYSTEM", "USER_INFO=service", 10, "Standard", ""},
      {"SYSTEM", "VR= m627 ", 11, "m627 ", ""},
      {"SYSTEM", "USER_INFO=Factory ", 10, "Standard", ""},
      {"SYSTEM", "INI_FILENAME=other.ini", 14, "/app/other.ini", ""},
      {"SYSTEM", "INI_FILENAME=\\VLT.ini", 14, "/app//VLT.ini", ""},
      {"VERIFICATION", "DEF_FILE_XLS=v", 16, "v.xls", ""},
      {"VERIFICATION", "DEF_VER_NO=-12", 17, "-12", ""},
      {"VERIFICATION", "DEF_VER_NO=1.2.3", 17, "7", "VERIFICATION/DEF_VER_NO"},
      {"VERIFICATION", "LOGO_FLG=40000", 18, "7", "VERIFICATION/LOGO_FLG"},
  };
  for (const auto& row : rows) {
    TestApp machine;
    machine.platform.files.files[kPath] = '[' + row.section + "]\n" + row.line + '\n';
    Disturb(machine.app.state);
    const LoadResult result = LoadSettings(machine.app, kPath, 0);
    EXPECT_EQ(Settings(machine.app.state)[row.at], row.expected) << row.line;
    EXPECT_EQ(result.stopped_at, row.stopped_at) << row.line;
    // What was read before the stop stands, what follows keeps what it had.
    const bool stopped = !row.stopped_at.empty();
    EXPECT_EQ(machine.app.state.StopBits, stopped && row.at == 0 ? "x" : "1") << row.line;
    if (row.at < 18) {
      EXPECT_EQ(machine.app.state.VerificationLogo, stopped ? 7 : 0) << row.line;
    }
  }
}

TEST(LoadSettings, APortAboveTheHighestOneIsRemembered) {
  TestApp machine;
  for (const auto& [port, beyond] : {std::pair("11", "11"), {"3", ""}, {"1e9", "1000000000"}, {"", ""}}) {
    machine.platform.files.files[kPath] = std::string("[COMM]\nPORT=") + port + "\n";
    const LoadResult result = LoadSettings(machine.app, kPath, 0);
    EXPECT_EQ(machine.app.state.PortBeyond, beyond);
    EXPECT_EQ(result.not_taken, *beyond != '\0' ? Texts{"COMM/PORT"} : Texts{}) << port;
  }
}

TEST(SettingsFile, BlanksBehindTheLinkSettingsReachNoPort) {
  TestApp machine;
  machine.platform.files.files[kPath] =
      "[COMM]\nSPEED=19200 \nPARITY= E\nSTOP_BIT=2\t\n[PORTS]\nCOM3=/dev/ttyUSB0 \n";
  LoadSettings(machine.app, kPath, 0);
  BuildCommSettings(machine.app.state);
  EXPECT_EQ(machine.app.state.CommSettings, "19200,E,8,2");
  EXPECT_EQ(GetPortDevice(machine.app, 3), "/dev/ttyUSB0");
}

TEST(LoadSettings, LeavesTheLanguageWhenTold) {
  TestApp machine;
  machine.platform.process.separator = '\\';
  machine.platform.process.folder = "C:\\Tool";
  EXPECT_EQ(BootstrapPath(machine.app), "C:\\Tool\\VLT.ini ");
  machine.platform.files.files[CommPath(machine.app)] = "[SYSTEM]\nLANG_FLAG=2\nUNIT_FLAG=1\n";
  LoadSettings(machine.app, BootstrapPath(machine.app), 1);
  EXPECT_EQ(machine.app.state.LangFlag, 1);
  EXPECT_EQ(machine.app.state.UnitFlag, 1);
  EXPECT_EQ(machine.app.state.IniFilePath, "C:\\Tool\\\\VLT.ini");
}

TEST(SettingsFile, SavesSystemAndLinkInOrderAndKeepsTheRest) {
  TestApp machine;
  machine.platform.files.files[kPath] =
      "; site 7\n[SYSTEM]\nVR=M627\nLANG_FLAG=1\n\n[PORTS]\nCOM3=/dev/ttyUSB0\n";
  SharedState& state = machine.app.state;
  LoadSettings(machine.app, BootstrapPath(machine.app), 0);
  EXPECT_EQ(state.IniFilePath, "/app//VLT.ini");
  state.PortNo = "3";
  state.Speed = "38400";
  state.StationNo = "07";
  BuildCommSettings(state);
  machine.platform.files.files["/app//VLT.ini"] = machine.platform.files.files[kPath];
  EXPECT_EQ(SaveSystemSettings(machine.app, state.IniFilePath), FileError::kGood);
  EXPECT_EQ(machine.platform.files.files["/app//VLT.ini"],
            "; site 7\n[SYSTEM]\nVR=M627\nLANG_FLAG=1\nUNIT_FLAG=0\nSYSTEM_LANG_FLAG=0\nUSER_INFO=Standard\n"
            "INI_FILENAME=VLT.ini\n\n[PORTS]\nCOM3=/dev/"
            "ttyUSB0\n[COMM]\nPORT=3\nSETTINGS=38400,O,8,1\nSPEED=38400\n"
            "PARITY=O\nSTOP_BIT=1\nTRANS_METHOD=RS232C\nSTATION_NO=07\nRETRY_NO=3\n");
  EXPECT_EQ(machine.platform.files.changes.size(), 2U);  // one write, one move
}

TEST(SettingsFile, AFailedSaveIsToldAndLeavesTheFile) {
  using Save = FileError (*)(TestApp&);
  const Save saves[] = {
      [](TestApp& m) { return SaveCommSettings(m.app, kPath); },
      [](TestApp& m) { return SaveSystemSettings(m.app, kPath); },
      [](TestApp& m) { return SaveUnitCache(m.app, kPath); },
      [](TestApp& m) { return SavePortNo(m.app); },
      [](TestApp& m) { return SetPvCsvDir(m.app, "/logs"); },
      [](TestApp& m) { return SetPortDevice(m.app, 1, "/dev/ttyS0"); },
      [](TestApp& m) { return SetWaveTrail(m.app, 3); },
  };
  for (const Save save : saves) {
    for (const int step : {1, 2}) {
      TestApp machine;
      machine.platform.files.files[kPath] = "[SYSTEM]\nVR=M627\n";
      machine.platform.files.FailChange(step, FileError::kFull);
      EXPECT_EQ(save(machine), FileError::kFull);
      EXPECT_EQ(machine.platform.files.files,
                (std::map<std::string, std::string>{{kPath, "[SYSTEM]\nVR=M627\n"}}));
      EXPECT_EQ(save(machine), FileError::kGood);
      EXPECT_EQ(machine.platform.files.files.size(), 1u) << "settings have no former file beside them";
    }
  }
}

TEST(UnitCache, ChannelTwoComesBackAsChannelThree) {
  TestApp machine;
  SharedState& state = machine.app.state;
  state.RangeKind = {1, 2, 3};
  state.RangeUnit = {4, 5, 6};
  state.TotalUnit = {7, 8, 9};
  state.OperationMode = 10;
  state.TempUnit = 11;
  state.HeatFlowUnit = 12;
  state.HeatTotalUnit = 13;
  state.TrendYScaleMax = "1.5";
  state.TrendXScalePoint = "600";
  EXPECT_EQ(SaveUnitCache(machine.app, kPath), FileError::kGood);
  EXPECT_EQ(
      machine.platform.files.files[kPath],
      "[RANGE]\r\nRANGE_KIND_Data=1\r\nRANGE_KIND_Data2=2\r\nRANGE_KIND_Data3=3\r\nRANGE_UNIT_Data=4\r\n"
      "RANGE_UNIT_Data2=5\r\nRANGE_UNIT_Data3=6\r\nOPERATION_MODE_Data=10\r\n[TOTAL]\r\nTOTAL_UNIT_Data=7\r\n"
      "TOTAL_UNIT_Data2=8\r\nTOTAL_UNIT_Data3=9\r\n[TEMPERATURE]\r\nTEMPERATURE_UNIT_Data=11\r\n"
      "RANGE_UNIT_Data=12\r\nTOTAL_UNIT_Data=13\r\n[MEASURE]\r\nY-SCALE MAX=1.5\r\nY-SCALE MIN=\r\n"
      "X-SCALE CYCLE=\r\nX-SCALE POINT=600\r\n");
  TestApp other;
  other.platform.files.files = machine.platform.files.files;
  EXPECT_TRUE(LoadUnitCache(other.app, kPath).Converted());
  const SharedState& back = other.app.state;
  EXPECT_EQ(back.RangeKind, (std::array{1, 0, 2}));
  EXPECT_EQ(back.RangeUnit, (std::array{4, 0, 5}));
  EXPECT_EQ(back.TotalUnit, (std::array{7, 0, 8}));
  EXPECT_EQ((std::array{back.OperationMode, back.TempUnit, back.HeatFlowUnit, back.HeatTotalUnit}),
            (std::array{10, 11, 12, 13}));
  EXPECT_EQ(back.TrendYScaleMax + back.TrendYScaleMin + back.TrendXScaleCycle + back.TrendXScalePoint,
            "1.5600");
}

TEST(UnitCache, StopsAtAValueThatIsNoUnitCode) {
  for (const std::string bad : {"m3", "32768", "-32769", "1,5", "+"}) {
    TestApp machine;
    machine.app.state.RangeUnit = {7, 7, 7};
    machine.platform.files.files[kPath] =
        "[RANGE]\nRANGE_KIND_Data=-32768\nRANGE_KIND_Data2=\nRANGE_UNIT_Data1=" + bad +
        "\nRANGE_UNIT_Data2=2\n[MEASURE]\nY-SCALE MAX=9\n";
    EXPECT_EQ(LoadUnitCache(machine.app, kPath).stopped_at, "RANGE/RANGE_UNIT_Data1") << bad;
    EXPECT_EQ(machine.app.state.RangeKind, (std::array{-32768, 0, 0}));
    EXPECT_EQ(machine.app.state.RangeUnit, (std::array{0, 7, 7}));
    EXPECT_EQ(machine.app.state.TrendYScaleMax, "");
  }
}

TEST(CsvFolders, TheMeasurePageReadsOneKeyAndStoresTheOther) {
  TestApp machine;
  EXPECT_EQ(GetMeasureCsvDir(machine.app), "c:\\");
  machine.platform.files.files[kPath] = "[CSVDIR]\nMEASURE_DIR=/by/hand\nPV_DIR=\n";
  EXPECT_EQ(GetPvCsvDir(machine.app), "c:\\");
  EXPECT_EQ(SetMeasureCsvDir(machine.app, "/logs/a.csv"), FileError::kGood);
  EXPECT_EQ(machine.app.state.PvCsvDir, "/logs/a.csv");
  EXPECT_EQ(GetMeasureCsvDir(machine.app), "/by/hand");
  EXPECT_EQ(GetPvCsvDir(machine.app), "/logs/a.csv");
}

TEST(PortNames, StandInTheBootstrapFile) {
  TestApp machine;
  EXPECT_EQ(GetPortDevice(machine.app, 4), "");
  SetPortDevice(machine.app, 10, "simulator");
  machine.app.state.PortNo = "10";
  SavePortNo(machine.app);
  EXPECT_EQ(GetPortDevice(machine.app, 10), "simulator");
  EXPECT_EQ(GetPortDevice(machine.app, 1), "");
  EXPECT_EQ(machine.platform.files.files[kPath], "[PORTS]\r\nCOM10=simulator\r\n[COMM]\r\nPORT=10\r\n");
}

}  // namespace
}  // namespace vlt
