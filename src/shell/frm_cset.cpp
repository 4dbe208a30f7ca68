// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/frm_cset.h"

#include <algorithm>
#include <array>
#include <optional>

#include "files/file_report.h"
#include "files/settings_file.h"
#include "link/operation.h"
#include "link/port.h"
#include "meter/identification.h"
#include "platform/port_settings.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_files.h"
#include "resources/text_ids_timing.h"
#include "state/form_lock.h"
#include "values/input_check.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kFontText = 1;

constexpr const char* kRs232c = "RS232C";
constexpr const char* kRs485 = "RS485";
constexpr const char* kNoStation = "00";
constexpr const char* kSpeedUnit = "BPS";  // behind the speed in its list
constexpr int kLowestStation = 1;
constexpr int kHighestStation = 31;
constexpr int kStationDigits = 2;
constexpr int kMostRetries = 5;

constexpr std::array kSpeeds = {"9600", "19200", "38400"};
constexpr std::array kMethods = {kRs232c, kRs485};
constexpr std::array kStopBits = {"1", "2"};

struct ParityRow {
  const char* letter;
  int text_id;
};
constexpr std::array<ParityRow, 3> kParities = {{{"N", 671}, {"E", 673}, {"O", 672}}};

struct LabelRow {
  Label FrmCSet::*label;
  int text_id;
};
constexpr LabelRow kLabels[] = {
    {&FrmCSet::lblPortNo, 1930},
    {&FrmCSet::lblTransMethod, 1950},
    {&FrmCSet::lblStaitionNo, text::kStationNumber},
    {&FrmCSet::lblSpeed, 1940},
    {&FrmCSet::lblParity, 930},
    {&FrmCSet::lblStopBit, 730},
    {&FrmCSet::lblRetryNo, 1130},
};

// What the faults of the lists are called.
struct ListFault {
  ComboBox FrmCSet::*list;
  const char* text;
};
constexpr ListFault kPortFault{&FrmCSet::PortNo, "error commport"};
constexpr ListFault kMethodFault{&FrmCSet::TransMethod, "error TransMethod"};
constexpr ListFault kSpeedFault{&FrmCSet::Speed, "error com_Bour"};
constexpr ListFault kParityFault{&FrmCSet::Parity, "error com_Parity"};

// The place of a stored text in its list, or -1. The settings file may have blanks around it.
template <class Rows, class Text>
int PlaceOf(const Rows& rows, const std::string& stored, Text&& text) {
  const auto found =
      std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return Trim(stored) == text(row); });
  return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

template <class Rows>
int PlaceOf(const Rows& rows, const std::string& stored) {
  return PlaceOf(rows, stored, [](const char* row) { return std::string_view(row); });
}

int PlaceOfParity(const std::string& stored) {
  return PlaceOf(kParities, stored, [](const ParityRow& row) { return std::string_view(row.letter); });
}

// What a station number may be.
std::string StationLimits(const App& app) {
  return FormatText(app.Text(text::kStationLimits), {ZeroPadded(kLowestStation, kStationDigits),
                                                     ZeroPadded(kHighestStation, kStationDigits)});
}

bool IsStation(std::optional<int> number) {
  return number && *number >= kLowestStation && *number <= kHighestStation;
}

}  // namespace

FrmCSet::FrmCSet(App& app) : Form(app.windows, "FrmCSet", FormPlace::kWindow), app_(app) {
  PortNo.on_click = [this] {
    if (on_port) on_port();
  };
  TransMethod.on_click = [this] { TransMethod_Click(); };
  StaitionNo.on_lost_focus = [this] { StaitionNo_LostFocus(); };
  StaitionNoUpDown.on_up = [this] { Step(1); };
  StaitionNoUpDown.on_down = [this] { Step(-1); };
  Command1.on_click = [this] { Command1_Click(); };
  Command2.on_click = [this] { Command2_Click(); };
}

void FrmCSet::FrmInit() {
  const std::string font = app_.Text(kFontText);
  SetCaption(app_.Text(text::kSetUpForSerialCommunication));
  for (Control* control : Controls()) control->SetFont({font, 8, false});
  for (const LabelRow& row : kLabels) {
    (this->*row.label).SetFont({font, 12, false});
    (this->*row.label).SetCaption(app_.Text(row.text_id));
  }
  chkTiming.SetCaption(app_.Text(text::kEventTiming));
  chkTiming.SetHint(app_.Text(text::kEventTimingHint));
  Command1.SetCaption(app_.Text(text::kSetting));
  Command2.SetCaption(app_.Text(text::kCancelText));
}

void FrmCSet::Form_Load() {
  FrmInit();
  StaitionNo.SetMaxLength(kStationDigits);
  table_setup();
}

void FrmCSet::Form_Activate() { Command1.SetEnabled(IsLineFree(app_)); }

void FrmCSet::FillLists() {
  std::vector<std::string> ports;
  for (int number = 1; number <= kHighestPort; ++number) ports.push_back("COM" + std::to_string(number));
  PortNo.SetItems(ports);
  TransMethod.SetItems({kMethods.begin(), kMethods.end()});
  Speed.Clear();
  for (const char* speed : kSpeeds) Speed.AddItem(std::string(speed) + kSpeedUnit);
  Parity.Clear();
  for (const ParityRow& row : kParities) Parity.AddItem(app_.Text(row.text_id));
  StopBit.SetItems({kStopBits.begin(), kStopBits.end()});
  RetryNo.Clear();
  for (int retries = 0; retries <= kMostRetries; ++retries) RetryNo.AddItem(std::to_string(retries));
}

void FrmCSet::table_setup() {
  const SharedState& state = app_.state;
  FillLists();
  const auto select = [&](const ListFault& fault, int place, const std::string& stored) {
    ComboBox& list = this->*fault.list;
    list.SetListIndex(place);
    list.SetMark(place >= 0 ? "" : FormatText(app_.Text(text::kNotOffered), {stored}));
    if (place < 0) app_.Show(fault.text);
  };
  // Number 0 is no fault: no port has been chosen yet.
  if (PortNumber(app_) != 0) select(kPortFault, PortNumber(app_) - 1, state.PortNo);
  StaitionNo.SetText(ZeroPadded(ParseWhole(state.StationNo).value_or(0), kStationDigits));
  select(kMethodFault, PlaceOf(kMethods, state.TransMethod), state.TransMethod);
  select(kSpeedFault, PlaceOf(kSpeeds, state.Speed), state.Speed);
  select(kParityFault, PlaceOfParity(state.Parity), state.Parity);
  StopBit.SetListIndex(PlaceOf(kStopBits, state.StopBits));
  RetryNo.SetListIndex(state.RetryNo);
  chkTiming.SetValue(state.EventTiming ? 1 : 0);
}

bool FrmCSet::IsRs485() const { return TransMethod.Text() == kRs485; }

void FrmCSet::TransMethod_Click() {
  TransMethod.SetMark("");
  StaitionNo.SetMark("");
  StaitionNo.SetEnabled(IsRs485());
  StaitionNoUpDown.SetEnabled(IsRs485());
  if (!IsRs485()) {
    StaitionNo.SetText(kNoStation);
  } else if (!IsStation(ParseWhole(StaitionNo.Text()))) {
    StaitionNo.SetText(ZeroPadded(kLowestStation, kStationDigits));
  }
}

void FrmCSet::StaitionNo_LostFocus() {
  const std::string& typed = StaitionNo.Text();
  if (typed.empty()) return;
  const std::optional<int> number = ParseWhole(typed);
  if (IsStation(number)) {
    StaitionNo.SetMark("");
    StaitionNo.SetText(ZeroPadded(*number, kStationDigits));
    return;
  }
  StaitionNo.SelectAll();
  app_.Show(app_.Text(IsNumericText(typed) == 0 && number ? text::kOutOfLimits : NoNumberText(typed)));
  StaitionNo.SetFocus();
}

void FrmCSet::Step(int by) {
  const int number = ParseWhole(StaitionNo.Text()).value_or(kLowestStation - by);
  StaitionNo.SetMark("");
  StaitionNo.SetText(ZeroPadded(std::clamp(number + by, kLowestStation, kHighestStation), kStationDigits));
}

LinkTry FrmCSet::ChosenLink() const {
  LinkTry link;
  if (Speed.ListIndex() >= 0) link.speed = kSpeeds[static_cast<std::size_t>(Speed.ListIndex())];
  if (Parity.ListIndex() >= 0) link.parity = kParities[static_cast<std::size_t>(Parity.ListIndex())].letter;
  return link;
}

void FrmCSet::Fill(const FoundMeter& meter) {
  Speed.SetListIndex(PlaceOf(kSpeeds, meter.link.speed));
  Parity.SetListIndex(PlaceOfParity(meter.link.parity));
  TransMethod.SetListIndex(PlaceOf(kMethods, meter.station == 0 ? kRs232c : kRs485));
  if (meter.station != 0) StaitionNo.SetText(ZeroPadded(meter.station, kStationDigits));
  for (Control* field :
       {static_cast<Control*>(&Speed), static_cast<Control*>(&Parity), static_cast<Control*>(&StaitionNo)}) {
    field->SetMark("");
  }
}

std::string FrmCSet::ParityText(const App& app, const std::string& letter) {
  const int place = PlaceOfParity(letter);
  return place < 0 ? letter : app.Text(kParities[static_cast<std::size_t>(place)].text_id);
}

std::string FrmCSet::DeviceText(const App& app, const std::string& device) {
  return IsSimulator(device) ? app.Text(text::kSimulatedMeter) + device.substr(kSimulatorWord.size())
                             : device;
}

bool FrmCSet::IsLineTaken() {
  if (IsLineFree(app_)) return false;
  app_.Status(app_.Text(text::kMonitorRuns));
  return true;
}

// A list that has nothing selected names its fault; port, stop bits and retries may be left as they are.
bool FrmCSet::CheckFields() {
  for (const ListFault& fault : {kMethodFault, kSpeedFault, kParityFault}) {
    if ((this->*fault.list).ListIndex() >= 0) continue;
    app_.Show(fault.text);
    SetFocus(this->*fault.list);
    return false;
  }
  return !IsRs485() || CheckStation();
}

bool FrmCSet::CheckStation() {
  const std::optional<int> number = ParseWhole(StaitionNo.Text());
  if (!IsStation(number)) {
    StaitionNo.SetMark(StationLimits(app_));
    StaitionNo.SetFocus();
    app_.Status(app_.Text(text::kStationNumber) + ": " + StationLimits(app_));
    return false;
  }
  StaitionNo.SetMark("");
  StaitionNo.SetText(ZeroPadded(*number, kStationDigits));
  return true;
}

void FrmCSet::TakeFields() {
  SharedState& state = app_.state;
  state.PortNo = std::to_string(ChosenPort());
  state.PortBeyond.clear();
  state.TransMethod = TransMethod.Text();
  state.StationNo = ChosenPort() != 0 ? StaitionNo.Text() : kNoStation;
  const std::string& speed = Speed.Text();
  state.Speed = speed.substr(0, speed.size() - std::string_view(kSpeedUnit).size());
  state.Parity = ChosenLink().parity;
  if (StopBit.ListIndex() >= 0) state.StopBits = StopBit.Text();
  if (RetryNo.ListIndex() >= 0) state.RetryNo = RetryNo.ListIndex();
  state.EventTiming = chkTiming.Ticked();
  BuildCommSettings(state);
  if (app_.frame != nullptr) app_.frame->ShowPvButton();
}

void FrmCSet::Command1_Click() {
  if (IsLineTaken() || !CheckFields()) return;
  Operation operation(app_, *this, "Command1");
  TakeFields();
  std::string failure;
  if (!Prove(failure)) {
    operation.End(failure);
    return;
  }
  ReadUnits(app_, {.heat_always = true});
  const FileError written = SaveCommSettings(app_, CommPath(app_));
  operation.End(app_.Text(text::kSetUpForSerialCommunication) + ": " + app_.Text(text::kLinkProved));
  if (written != FileError::kGood) ReportNotWritten(app_, CommPath(app_), written);
  List().Unload(Name());
}

// The link is what the fields say, and a meter answers on it. Boxes say what fails, `failure` says more for
// the status line.
bool FrmCSet::Prove(std::string& failure) {
  bool done = false;
  failure = app_.Text(text::kCommunicationError);
  ForgetMeter(app_.state);
  ClosePort(app_, done);
  if (!done) {
    app_.Show(app_.Text(text::kCommunicationError));
    return false;
  }
  if (!OpenPort(app_)) {
    app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
    failure = CommunicationErrorText(app_);
    return false;
  }
  if (!ReadSytem()) {
    failure += ' ' + app_.state.LastErrorText;
    app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
    return false;
  }
  return true;
}

bool FrmCSet::ReadSytem() {
  if (!ReadIdentification(app_)) return false;
  if (app_.frame != nullptr) app_.frame->ShowMeter();
  return true;
}

void FrmCSet::Command2_Click() { List().Unload(Name()); }

}  // namespace vlt
