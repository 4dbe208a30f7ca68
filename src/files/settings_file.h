// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own settings: VLT.ini beside the program (the bootstrap file) and the loader initial file
// that its key INI_FILENAME names, mostly the same file. A failed write harms nothing; it is returned so that
// the caller can tell the operator (files/file_report.h).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "files/profile_file.h"
#include "platform/file_system.h"
#include "state/app.h"

namespace vlt {

// How a reader ended.
struct LoadResult {
  FileError file = FileError::kGood;
  // "SECTION/KEY" of the value that is no number of its kind. The reader stops there and keeps what it has
  // stored before. Empty: all keys were read.
  std::string stopped_at{};
  // Every key, "SECTION/KEY", whose value was not taken: the one above, and a port beyond the highest one.
  std::vector<std::string> not_taken{};
  // Of the keys that a parameter file holds and that this reading looks for: how many there are, and how many
  // of them the file had with a value that was taken.
  int known = 0;
  int taken = 0;
  bool Converted() const { return stopped_at.empty(); }
  void Leave(const std::string& section, const std::string& key) { not_taken.push_back(section + '/' + key); }
  void Stop(const std::string& section, const std::string& key) {
    Leave(section, key);
    stopped_at = not_taken.back();
  }
};

// Program folder, separator, "VLT.ini".
std::string CommPath(App& app);
// The same with one blank behind it: the file system ignores it, but as a text it never equals the path of
// the loader initial file.
std::string BootstrapPath(App& app);
// What stands behind the last "\" or "/".
std::string LastComponent(const std::string& path);

// The text up to its first NUL, or `absent` when the length that was read is below 1.
std::string ProfileValueOrDefault(std::string_view buffer, std::string_view absent, std::size_t length);
// The same by its other name.
inline std::string IniValueOrDefault(std::string_view buffer, std::string_view absent, std::size_t length) {
  return ProfileValueOrDefault(buffer, absent, length);
}

// Sections COMM, SYSTEM, CSVDIR and VERIFICATION into the shared state. Key LANG_FLAG is left alone when
// skipLangFlag is 1. Without the file, or when it can't be read, all keys take their defaults.
LoadResult LoadSettings(App& app, const std::string& path, int skipLangFlag);
LoadResult LoadSettings(App& app, const ProfileFile& profile, int skipLangFlag);
// Sections RANGE, TOTAL, TEMPERATURE and MEASURE: the units of the last session and the chart's scales.
LoadResult LoadUnitCache(App& app, const std::string& path);

// CommSettings from speed, parity and stop bits. The port in use does not change by it.
void BuildCommSettings(SharedState& state);

// Key TIMING of section COMM of the bootstrap file: "EVENT" for event timing, any other value or none for the
// pattern. It belongs to this machine's line, so that a parameter file neither holds nor changes it.
void LoadTiming(App& app);

// Section COMM, with TIMING.
FileError SaveCommSettings(App& app, const std::string& path);
// The highest COM number that the program's port list offers.
inline constexpr int kHighestPort = 10;

// Key PORT of section COMM in the bootstrap file (frmMaint_COMM changes nothing else).
FileError SavePortNo(App& app);
// The keys of section SYSTEM that the program keeps, and section COMM.
FileError SaveSystemSettings(App& app, const std::string& path);
void PutSystemSettings(const SharedState& state, ProfileFile& profile);
FileError SaveUnitCache(App& app, const std::string& path);

// Folders of the CSV logs, always in the bootstrap file. The measure page reads MEASURE_DIR and stores its
// choice under PV_DIR: MEASURE_DIR is set by hand only. The setters also store PvCsvDir.
std::string GetMeasureCsvDir(App& app);
std::string GetPvCsvDir(App& app);
FileError SetMeasureCsvDir(App& app, const std::string& folder);
FileError SetPvCsvDir(App& app, const std::string& folder);

// The device that COM number `number` stands for by section PORTS of the bootstrap file ("COM3" names
// "/dev/ttyUSB0"), or empty.
std::string GetPortDevice(App& app, int number);
// The same, but for a COM number whose adapter has come back under another name: that name.
std::string PortDeviceInForce(App& app, int number);
// What an operator assigns counts, wherever an adapter was seen before.
FileError SetPortDevice(App& app, int number, const std::string& device);

// Key SYNC of section LOG of the bootstrap file is 1: logs are flushed to the disk once a cycle.
bool GetLogSync(App& app);
// Key IDENTIFY of section LINK of the bootstrap file is not 0: each run asks the meter for its ID number, so
// that it can tell one from another behind a loss of the port.
bool GetIdentifyRuns(App& app);

// How many earlier captures the chart of waves shows behind the newest one: key WAVE_TRAIL of section VIEW of
// the bootstrap file. What is no number from 0 to `most` reads as `absent`.
int GetWaveTrail(App& app, int most, int absent);
FileError SetWaveTrail(App& app, int count);

}  // namespace vlt
