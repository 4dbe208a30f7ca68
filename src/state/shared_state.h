// SPDX-License-Identifier: GPL-3.0-or-later
// All that outlives one handler: plain named variables, one instance a process, read and written directly.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "state/lost_port.h"
#include "state/meter_facts.h"

namespace vlt {

// What the maintenance page showed when it was left last. Goes to no file.
struct MaintenanceTexts {
  // Of an analog output: the point that is adjusted (0 is 4 mA, 1 is 20 mA, -1 none) and the texts of both.
  struct Adjustment {
    int point = -1;
    std::string text_4ma;
    std::string text_20ma;
  };
  std::array<Adjustment, 2> adjustments;
  std::string ao_percent;
  int do_index = -1;
  std::string pulse;
  std::string do2_frequency;
  std::string input_data;
  std::string tracking_time;
};

// Booleans kept as numbers are -1 for true and 0 for false, and are only compared against 0. What is known of
// the meter in use is the first part of it. The settings file keeps the units of the last session; in its
// tables these are RangeKindCache, RangeUnitCache, TotalUnitCache, OperationModeCache, TemperatureUnitCache
// (TempUnit), TemperatureRangeUnitCache (HeatFlowUnit) and TemperatureTotalUnitCache (HeatTotalUnit).
struct SharedState : ToldFacts {
  LearntFacts Learnt;

  // Program and language.
  int LangFlag = 0;                   // program's language: 0 Japanese, above 0 English
  int SystemLangFlag = 0;             // language of the meter's own display, 0 to 4
  int RangeUnitTrack = 0;             // the UnitFlag that the range page last filled its lists for
  int TotalUnitTrack = 0;             // the same for the total page
  std::string UserInfo = "Standard";  // "Standard", "Service" or "Factory"
  std::string PageFont;
  // Full path of the settings file in use (LoaderIniPath where files are compared): program folder,
  // separator, file name; with two separators when the file does not name it.
  std::string IniFilePath;
  std::string IniShortPath;  // its short form (LoaderIniShortPath); written once, read by nobody

  // Serial link.
  std::string PortNo;  // n of COMn; 0 cannot be opened; empty until a file gives one
  // The port of the settings when it lies above the highest one and was therefore not taken, else empty.
  std::string PortBeyond;
  std::string Speed = "9600";
  std::string Parity = "O";
  std::string StopBits = "1";
  std::string CommSettings;  // speed, parity letter, 8, stop bits, joined by commas
  std::string TransMethod = "RS232C";
  std::string StationNo = "00";
  int RetryNo = 3;
  // A reply is taken when its last byte is in, and the waits of the pattern are only limits.
  bool EventTiming = false;
  int CharGapMs = 0;  // silence between two frames, computed when the port opens
  bool PortIsOpen = false;
  std::string LastErrorText;    // ExchangeReport::text of the last exchange, for the status line alone
  std::string PortFaultReason;  // why the port could not be opened, for the status line
  // What the port was opened with last. The settings above may have changed since.
  int OpenedPort = 0;
  std::string OpenedDevice;
  std::string OpenedSettings;
  LostPort Lost;  // the same port, and whether it went away
  // Devices of COM numbers whose adapter has come back under another name.
  std::map<int, std::string> MovedPorts;
  // Request and reply of the device queries, shared by all of them.
  std::array<std::uint8_t, 8> MemTxFrame{};
  std::array<std::uint8_t, 7> MemRxFrame{};

  // Why the start routine ended the program, with the file and the key; empty when it did not.
  std::string StartFaultReason;
  // What the start routine has to tell beside it: a lock file that was left behind. The main window shows it.
  std::string StartRemark;

  // Interface.
  bool UiLocked = false;
  int StopRequest = 0;  // 1 asks a long operation to stop
  int PvRunning = 0;    // a live read of Form11 or Form12 is on
  bool AppRunning = false;
  bool TimerExpired = false;
  bool TellingFault = false;  // a box about an unforeseen exception is up
  int ChoiceResult = 0;       // frmMssg: 0 pending, 1 the firmware tool ran, 2 go on
  int WaitCancel = 0;         // frmWait: 1 after its Cancel button
  int FwCancelFlag = 0;       // frmMaint_Wait: 1 after its Cancel button
  int FwEndFlag = 0;          // 1 when the firmware tool's window is gone; frmMssg waits for it

  // What the meter has told of itself in this session.
  std::string IdentifiedAt;  // date and time of the last identification; empty when it has failed
  bool PathModeKnown = false;
  std::string MeterType;  // of the control board, as the three texts behind it; empty until asked
  std::string MeterVersion;
  std::string MeterIdNo;            // KnownIdNumber of meter/identification.h tells whether it still holds
  std::int64_t MeterIdNoOrder = 0;  // when it was told, in the order of Learnt.writes
  std::string MeterSpecNo;
  // Meters that are, or may be, in their test state.
  std::set<MeterPlace> MetersInTest;
  MaintenanceTexts Maintenance;

  // Channel or output that a page shows; persists between openings.
  int ProcessChannel = 0;
  int RangeChannel = 0;
  int TotalChannel = 0;
  int OutputIndex = 0;
  int DetailChannel = 0;

  // Trend chart.
  int TrendChannelIndex = 0;
  int TrendQuantityIndex = 0;
  std::string TrendYScaleMax;
  std::string TrendYScaleMin;
  std::string TrendXScaleCycle;
  std::string TrendXScalePoint;

  // Folders, and the values of section VERIFICATION, which are held and not used.
  std::string MeasureDir;
  std::string PvCsvDir;
  std::string VerificationDir;
  std::string VerificationFile;
  int VerificationNumber = 0;
  int VerificationLogo = 0;

  bool LogSync = false;  // logs are flushed to the disk once a cycle

  int LocaleId = 0;  // the user's locale; the firmware tool reads it
};

}  // namespace vlt
