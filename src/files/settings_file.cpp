// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/settings_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>

#include "files/whole_file.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr const char* kFileName = "VLT.ini";
constexpr const char* kTimingSection = "COMM";
constexpr const char* kTimingKey = "TIMING";
constexpr const char* kEventTiming = "EVENT";
constexpr const char* kPatternTiming = "PATTERN";
constexpr const char* kDefaultCsvDir = "c:\\";
constexpr const char* kUserLevels[] = {"Standard", "Service", "Factory"};

// Stored numbers are 16-bit words.
bool Store16(double number, int& target) {
  if (number < std::numeric_limits<std::int16_t>::min() ||
      number > std::numeric_limits<std::int16_t>::max()) {
    return false;
  }
  target = static_cast<int>(number);
  return true;
}

enum class Taken {
  kYes,
  kLeft,  // the value is none that can be used; the next key follows
  kStop,  // the value can't be converted; reading ends
};

Taken TakenIf(bool converted) { return converted ? Taken::kYes : Taken::kStop; }

bool StoreNumberText(const std::string& text, int& target) {
  const std::optional<double> number = ParseNumber(text);
  return number && Store16(RoundHalfEven(*number), target);
}

// What a row of the settings does with its value.
using Take = Taken (*)(App& app, const std::string& value);

template <auto member>
Taken TakeText(App& app, const std::string& value) {
  app.state.*member = value;
  return Taken::kYes;
}

// Integers are read as the platform does it: digits as far as they go.
template <auto member>
Taken TakeInteger(App& app, const std::string& value) {
  return TakenIf(Store16(LeadingInteger(value), app.state.*member));
}

// Texts that hold a number must hold one.
template <int SharedState::*member>
Taken TakeNumberText(App& app, const std::string& value) {
  return TakenIf(StoreNumberText(value, app.state.*member));
}

// A number above the highest port is a number all right; the port in force then stays.
Taken TakePort(App& app, const std::string& value) {
  const std::optional<double> number = ParseNumber(value);
  if (!number || *number < std::numeric_limits<int>::min()) return Taken::kStop;
  const double port = RoundHalfEven(*number);
  const bool beyond = port > kHighestPort;
  app.state.PortBeyond = beyond ? GeneralText(port) : "";
  if (beyond) return Taken::kLeft;
  app.state.PortNo = std::to_string(static_cast<int>(port));
  return Taken::kYes;
}

Taken TakeUserInfo(App& app, const std::string& value) {
  const bool known =
      std::find(std::begin(kUserLevels), std::end(kUserLevels), value) != std::end(kUserLevels);
  app.state.UserInfo = known ? value : kUserLevels[0];
  return Taken::kYes;
}

// The default brings a separator of its own, so that the path of a file that nothing names has two: it is
// compared as a text, and what compares different may be overwritten as a parameter file.
Taken TakeIniFileName(App& app, const std::string& value) {
  const char separator = app.platform.process.Separator();
  std::string name = value;
  if (separator != '\\') std::replace(name.begin(), name.end(), '\\', separator);
  app.state.IniFilePath = app.platform.process.ProgramFolder() + separator + name;
  return Taken::kYes;
}

Taken TakeVerificationFile(App& app, const std::string& value) {
  app.state.VerificationFile = value.empty() ? "" : value + ".xls";
  return Taken::kYes;
}

struct SettingRow {
  const char* section;
  const char* key;
  const char* absent;  // taken when the key is not there
  const char* empty;   // taken when its value is empty
  Take take;
};

// In the order of reading: after a value that can't be converted the rows behind it keep what they had.
constexpr SettingRow kSettings[] = {
    {"COMM", "PORT", "00", "00", TakePort},
    {"COMM", "SPEED", "9600", "9600", TakeText<&SharedState::Speed>},
    {"COMM", "PARITY", "O", "O", TakeText<&SharedState::Parity>},
    {"COMM", "STOP_BIT", "1", "1", TakeText<&SharedState::StopBits>},
    {"COMM", "TRANS_METHOD", "RS232C", "RS232C", TakeText<&SharedState::TransMethod>},
    {"COMM", "STATION_NO", "00", "00", TakeText<&SharedState::StationNo>},
    {"COMM", "RETRY_NO", "3", "3", TakeInteger<&SharedState::RetryNo>},
    {"SYSTEM", "UNIT_FLAG", "0", "0", TakeInteger<&SharedState::UnitFlag>},
    {"SYSTEM", "SYSTEM_LANG_FLAG", "0", "0", TakeInteger<&SharedState::SystemLangFlag>},
    {"SYSTEM", "LANG_FLAG", "0", "0", TakeInteger<&SharedState::LangFlag>},
    {"SYSTEM", "USER_INFO", "Standard", "Standard", TakeUserInfo},
    {"SYSTEM", "VR", "", "", TakeText<&SharedState::ModelCode>},
    {"CSVDIR", "MEASURE_DIR", kDefaultCsvDir, kDefaultCsvDir, TakeText<&SharedState::MeasureDir>},
    {"CSVDIR", "PV_DIR", kDefaultCsvDir, kDefaultCsvDir, TakeText<&SharedState::PvCsvDir>},
    {"SYSTEM", "INI_FILENAME", "\\VLT.ini", kFileName, TakeIniFileName},
    {"VERIFICATION", "DEF_DIR", kDefaultCsvDir, "", TakeText<&SharedState::VerificationDir>},
    {"VERIFICATION", "DEF_FILE_XLS", "Verification", "", TakeVerificationFile},
    {"VERIFICATION", "DEF_VER_NO", "0", "0", TakeNumberText<&SharedState::VerificationNumber>},
    {"VERIFICATION", "LOGO_FLG", "0", "0", TakeNumberText<&SharedState::VerificationLogo>},
};

// A cached unit code (RANGE_KIND, RANGE_UNIT and TOTAL_UNIT have one per channel). The numbers behind the
// keys of channels 2 and 3 differ between writing and reading: what was saved for channel 2 comes back for
// channel 3, and channel 2 has no key that anything writes. Files in the field depend on it.
struct UnitRow {
  const char* section;
  const char* written;
  const char* read;
  int& (*code)(SharedState& state);
};

template <int MeterFacts::*member>
int& Code(SharedState& state) {
  return state.*member;
}

template <std::array<int, kChannels> MeterFacts::*member, std::size_t channel>
int& Code(SharedState& state) {
  return (state.*member)[channel];
}

constexpr UnitRow kUnits[] = {
    {"RANGE", "RANGE_KIND_Data", "RANGE_KIND_Data", Code<&SharedState::RangeKind, 0>},
    {"RANGE", "RANGE_KIND_Data2", "RANGE_KIND_Data1", Code<&SharedState::RangeKind, 1>},
    {"RANGE", "RANGE_KIND_Data3", "RANGE_KIND_Data2", Code<&SharedState::RangeKind, 2>},
    {"RANGE", "RANGE_UNIT_Data", "RANGE_UNIT_Data", Code<&SharedState::RangeUnit, 0>},
    {"RANGE", "RANGE_UNIT_Data2", "RANGE_UNIT_Data1", Code<&SharedState::RangeUnit, 1>},
    {"RANGE", "RANGE_UNIT_Data3", "RANGE_UNIT_Data2", Code<&SharedState::RangeUnit, 2>},
    {"RANGE", "OPERATION_MODE_Data", "OPERATION_MODE_Data", Code<&SharedState::OperationMode>},
    {"TOTAL", "TOTAL_UNIT_Data", "TOTAL_UNIT_Data", Code<&SharedState::TotalUnit, 0>},
    {"TOTAL", "TOTAL_UNIT_Data2", "TOTAL_UNIT_Data1", Code<&SharedState::TotalUnit, 1>},
    {"TOTAL", "TOTAL_UNIT_Data3", "TOTAL_UNIT_Data2", Code<&SharedState::TotalUnit, 2>},
    {"TEMPERATURE", "TEMPERATURE_UNIT_Data", "TEMPERATURE_UNIT_Data", Code<&SharedState::TempUnit>},
    {"TEMPERATURE", "RANGE_UNIT_Data", "RANGE_UNIT_Data", Code<&SharedState::HeatFlowUnit>},
    {"TEMPERATURE", "TOTAL_UNIT_Data", "TOTAL_UNIT_Data", Code<&SharedState::HeatTotalUnit>},
};

// A text that goes to the file as it is.
struct TextRow {
  const char* section;
  const char* key;
  std::string SharedState::*text;
};

constexpr TextRow kScales[] = {
    {"MEASURE", "Y-SCALE MAX", &SharedState::TrendYScaleMax},
    {"MEASURE", "Y-SCALE MIN", &SharedState::TrendYScaleMin},
    {"MEASURE", "X-SCALE CYCLE", &SharedState::TrendXScaleCycle},
    {"MEASURE", "X-SCALE POINT", &SharedState::TrendXScalePoint},
};

struct WriteRow {
  const char* section;
  const char* key;
  std::string (*text)(const SharedState& state);
};

template <std::string SharedState::*member>
std::string Stored(const SharedState& state) {
  return state.*member;
}

template <int MeterFacts::*member>
std::string Stored(const SharedState& state) {
  return std::to_string(state.*member);
}

template <int SharedState::*member>
std::string Stored(const SharedState& state) {
  return std::to_string(state.*member);
}

std::string IniFileName(const SharedState& state) { return LastComponent(state.IniFilePath); }

constexpr WriteRow kSystemRows[] = {
    {"SYSTEM", "UNIT_FLAG", Stored<&SharedState::UnitFlag>},
    {"SYSTEM", "SYSTEM_LANG_FLAG", Stored<&SharedState::SystemLangFlag>},
    {"SYSTEM", "USER_INFO", Stored<&SharedState::UserInfo>},
    {"SYSTEM", "INI_FILENAME", IniFileName},
};

constexpr WriteRow kPortRow = {"COMM", "PORT", Stored<&SharedState::PortNo>};

constexpr WriteRow kCommRows[] = {
    kPortRow,
    {"COMM", "SETTINGS", Stored<&SharedState::CommSettings>},
    {"COMM", "SPEED", Stored<&SharedState::Speed>},
    {"COMM", "PARITY", Stored<&SharedState::Parity>},
    {"COMM", "STOP_BIT", Stored<&SharedState::StopBits>},
    {"COMM", "TRANS_METHOD", Stored<&SharedState::TransMethod>},
    {"COMM", "STATION_NO", Stored<&SharedState::StationNo>},
    {"COMM", "RETRY_NO", Stored<&SharedState::RetryNo>},
};

void Put(const WriteRow& row, const SharedState& state, ProfileFile& profile) {
  profile.SetString(row.section, row.key, row.text(state));
}

// The value as the readers take it: `absent` for a missing key, `empty` for an empty value.
std::string ValueOf(const ProfileFile& profile, const SettingRow& row) {
  const std::string buffer = profile.GetString(row.section, row.key, row.absent);
  return ProfileValueOrDefault(buffer, row.empty, buffer.size());
}

// Parameter files hold what the program writes to them of its settings.
bool StandsInParameterFiles(const SettingRow& row) {
  const auto same = [&row](const WriteRow& written) {
    return written.section == std::string_view(row.section) && written.key == std::string_view(row.key);
  };
  return std::any_of(std::begin(kSystemRows), std::end(kSystemRows), same) ||
         std::any_of(std::begin(kCommRows), std::end(kCommRows), same);
}

LoadResult TakeUnitCache(SharedState& state, const ProfileFile& profile) {
  LoadResult result;
  constexpr const char* kNone = "0";
  for (const UnitRow& row : kUnits) {
    const std::string buffer = profile.GetString(row.section, row.read, kNone);
    if (!StoreNumberText(ProfileValueOrDefault(buffer, kNone, buffer.size()), row.code(state))) {
      result.Stop(row.section, row.read);
      return result;
    }
  }
  for (const TextRow& row : kScales) state.*row.text = CutAtNul(profile.GetString(row.section, row.key, ""));
  return result;
}

std::string CsvDir(App& app, const char* key) {
  ProfileFile profile;
  ReadProfile(app.platform.files, BootstrapPath(app), profile);
  const std::string buffer = profile.GetString("CSVDIR", key, kDefaultCsvDir);
  return ProfileValueOrDefault(buffer, kDefaultCsvDir, buffer.size());
}

bool IsSwitchedOn(App& app, const char* section, const char* key) {
  ProfileFile profile;
  ReadProfile(app.platform.files, CommPath(app), profile);
  return profile.GetInt(section, key, 0) == 1;
}

FileError SetBootstrapKey(App& app, const char* section, const std::string& key, const std::string& value) {
  return ChangeProfile(app.platform.files, CommPath(app), false,
                       [&](ProfileFile& profile) { profile.SetString(section, key, value); });
}

}  // namespace

std::string CommPath(App& app) {
  return app.platform.process.ProgramFolder() + app.platform.process.Separator() + kFileName;
}

std::string BootstrapPath(App& app) { return CommPath(app) + ' '; }

std::string LastComponent(const std::string& path) { return path.substr(path.find_last_of("\\/") + 1); }

std::string ProfileValueOrDefault(std::string_view buffer, std::string_view absent, std::size_t length) {
  return length < 1 ? std::string(absent) : CutAtNul(buffer);
}

LoadResult LoadSettings(App& app, const ProfileFile& profile, int skipLangFlag) {
  LoadResult result;
  for (const SettingRow& row : kSettings) {
    if (skipLangFlag == 1 && row.key == std::string_view("LANG_FLAG")) continue;
    const bool counts = StandsInParameterFiles(row);
    result.known += counts;
    if (!result.Converted()) continue;
    const Taken taken = row.take(app, ValueOf(profile, row));
    result.taken += counts && taken == Taken::kYes && profile.Has(row.section, row.key);
    if (taken == Taken::kStop) result.Stop(row.section, row.key);
    if (taken == Taken::kLeft) result.Leave(row.section, row.key);
  }
  // What a file tells is no meter's word.
  app.state.Learnt.ForgetAll();
  return result;
}

LoadResult LoadSettings(App& app, const std::string& path, int skipLangFlag) {
  ProfileFile profile;
  const FileError error = ReadProfile(app.platform.files, path, profile);
  LoadResult result = LoadSettings(app, profile, skipLangFlag);
  result.file = error;
  return result;
}

LoadResult LoadUnitCache(App& app, const std::string& path) {
  ProfileFile profile;
  const FileError error = ReadProfile(app.platform.files, path, profile);
  LoadResult result = TakeUnitCache(app.state, profile);
  result.file = error;
  return result;
}

// A port takes no blanks among its settings; the settings file may have some behind a value.
void BuildCommSettings(SharedState& state) {
  const auto part = [](const std::string& text) { return std::string(Trim(text)); };
  state.CommSettings = part(state.Speed) + ',' + part(state.Parity) + ",8," + part(state.StopBits);
}

FileError SaveCommSettings(App& app, const std::string& path) {
  return ChangeProfile(app.platform.files, path, false, [&](ProfileFile& profile) {
    for (const WriteRow& row : kCommRows) Put(row, app.state, profile);
    // A file that never had the key is left without it while the timing is the pattern's.
    if (!app.state.EventTiming && !profile.Has(kTimingSection, kTimingKey)) return;
    profile.SetString(kTimingSection, kTimingKey, app.state.EventTiming ? kEventTiming : kPatternTiming);
  });
}

void LoadTiming(App& app) {
  ProfileFile profile;
  ReadProfile(app.platform.files, CommPath(app), profile);
  const std::string timing = CutAtNul(profile.GetString(kTimingSection, kTimingKey, kPatternTiming));
  app.state.EventTiming = Trim(timing) == kEventTiming;
}

FileError SavePortNo(App& app) {
  return ChangeProfile(app.platform.files, CommPath(app), false,
                       [&](ProfileFile& profile) { Put(kPortRow, app.state, profile); });
}

void PutSystemSettings(const SharedState& state, ProfileFile& profile) {
  for (const WriteRow& row : kSystemRows) Put(row, state, profile);
  for (const WriteRow& row : kCommRows) Put(row, state, profile);
}

FileError SaveSystemSettings(App& app, const std::string& path) {
  return ChangeProfile(app.platform.files, path, false,
                       [&](ProfileFile& profile) { PutSystemSettings(app.state, profile); });
}

FileError SaveUnitCache(App& app, const std::string& path) {
  return ChangeProfile(app.platform.files, path, false, [&](ProfileFile& profile) {
    for (const UnitRow& row : kUnits) {
      profile.SetString(row.section, row.written, std::to_string(row.code(app.state)));
    }
    for (const TextRow& row : kScales) profile.SetString(row.section, row.key, app.state.*row.text);
  });
}

std::string GetMeasureCsvDir(App& app) { return CsvDir(app, "MEASURE_DIR"); }

std::string GetPvCsvDir(App& app) { return CsvDir(app, "PV_DIR"); }

FileError SetMeasureCsvDir(App& app, const std::string& folder) { return SetPvCsvDir(app, folder); }

FileError SetPvCsvDir(App& app, const std::string& folder) {
  app.state.PvCsvDir = folder;
  return SetBootstrapKey(app, "CSVDIR", "PV_DIR", folder);
}

std::string GetPortDevice(App& app, int number) {
  ProfileFile profile;
  ReadProfile(app.platform.files, CommPath(app), profile);
  return std::string(Trim(CutAtNul(profile.GetString("PORTS", "COM" + std::to_string(number), ""))));
}

std::string PortDeviceInForce(App& app, int number) {
  const auto moved = app.state.MovedPorts.find(number);
  return moved == app.state.MovedPorts.end() ? GetPortDevice(app, number) : moved->second;
}

bool GetLogSync(App& app) { return IsSwitchedOn(app, "LOG", "SYNC"); }

bool GetIdentifyRuns(App& app) {
  ProfileFile profile;
  ReadProfile(app.platform.files, CommPath(app), profile);
  return Trim(CutAtNul(profile.GetString("LINK", "IDENTIFY", ""))) != "0";
}

FileError SetPortDevice(App& app, int number, const std::string& device) {
  app.state.MovedPorts.erase(number);
  return SetBootstrapKey(app, "PORTS", "COM" + std::to_string(number), device);
}

int GetWaveTrail(App& app, int most, int absent) {
  ProfileFile profile;
  ReadProfile(app.platform.files, CommPath(app), profile);
  const int count = profile.GetInt("VIEW", "WAVE_TRAIL", absent);
  return count < 0 || count > most ? absent : count;
}

FileError SetWaveTrail(App& app, int count) {
  return SetBootstrapKey(app, "VIEW", "WAVE_TRAIL", std::to_string(count));
}

}  // namespace vlt
