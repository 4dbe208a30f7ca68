// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/port.h"

#include <charconv>

#include "link/port_return.h"
#include "platform/port_settings.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "state/line_pace.h"
#include "state/line_record.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kRestMs = 200;
constexpr double kGapBits = 48;

int NumberIn(const std::string& text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

int ReasonId(const App& app, const PortFault& fault, int port) {
  switch (fault.Code()) {
    case PortFaultCode::kMissing:
      if (port != 0) return text::kPortMissing;
      return app.state.PortBeyond.empty() ? text::kPortNotChosen : text::kPortBeyond;
    case PortFaultCode::kNoPermission:
      return fault.Group().empty() ? text::kPortNotAllowed : text::kPortNotInGroup;
    case PortFaultCode::kBusy:
      return text::kPortBusy;
    case PortFaultCode::kSettings:
      return text::kPortBadSettings;
    case PortFaultCode::kRemoved:
      return text::kPortRemoved;
    default:
      return text::kPortFault;
  }
}

// What stands in the third place of a reason.
std::string Detail(const App& app, const PortFault& fault, const std::string& settings) {
  if (fault.Code() == PortFaultCode::kSettings) return settings;
  if (fault.Code() == PortFaultCode::kNoPermission) return fault.Group();
  if (fault.Code() == PortFaultCode::kMissing) return app.state.PortBeyond;
  return std::to_string(fault.Number());
}

void Configure(SerialPort& port, int number, const std::string& settings) {
  port.Open(number, settings);
  port.SetRts(false);
  port.SetDtr(false);
}

// Whatever was on its way before is lost.
LinePace PaceOf(const std::string& settings) {
  LinePace pace;
  if (const auto parsed = ParsePortSettings(settings)) {
    const int parity_bit = parsed->parity == PortParity::kNone ? 0 : 1;
    pace.speed = parsed->speed;
    pace.bits_of_character = 1 + parsed->data_bits + parity_bit + parsed->stop_bits;
  }
  return pace;
}

// Runs one operation; false when it raised a fault.
template <class Operation>
bool Try(Operation&& operation) {
  try {
    operation();
    return true;
  } catch (const PortFault&) {
    return false;
  }
}

}  // namespace

// A COM number that stands for no device reads "COM3", without empty brackets behind it.
std::string PortFaultText(const App& app, const PortFault& fault, int port, const std::string& settings) {
  std::string reason =
      FormatText(app.Text(ReasonId(app, fault, port)),
                 {"COM" + std::to_string(port), fault.Device(), Detail(app, fault, settings)});
  const std::string empty = " ()";
  if (const std::size_t at = reason.find(empty); at != std::string::npos) reason.erase(at, empty.size());
  return reason;
}

void OpenPort(App& app, int port, const std::string& settings, bool& result) {
  result = app.platform.port.IsOpen();
  if (result) return;
  FollowAdapter(app, port);
  result = OpenPortAsItStands(app, port, settings);
}

bool OpenPortAsItStands(App& app, int port, const std::string& settings) {
  SerialPort& device = app.platform.port;
  bool result = false;
  app.state.CharGapMs = CalcCharGap(app);
  app.state.PortFaultReason.clear();
  try {
    Configure(device, port, settings);
    if (app.state.EventTiming) device.AskPrompt();
    *app.pace = PaceOf(settings);
    result = true;
    app.state.OpenedPort = port;
    app.state.Learnt.ForgetAll();
    app.state.OpenedDevice = device.DeviceBehind(port);
    app.state.OpenedSettings = settings;
    app.line->Opened(settings);
    NoteOpened(app, port);
  } catch (const PortFault& fault) {
    app.state.PortFaultReason = PortFaultText(app, fault, port, settings);
    Try([&] { device.Close(); });
  }
  app.state.PortIsOpen = result;
  if (app.frame != nullptr) app.frame->ShowFacts();
  return result;
}

bool OpenPort(App& app) {
  bool result = false;
  OpenPort(app, PortNumber(app), app.state.CommSettings, result);
  return result;
}

bool OpenPortOrTell(App& app, MessageIcon icon) {
  if (OpenPort(app)) return true;
  app.Show(app.Text(text::kCommunicationError), icon);
  app.windows.SetMousePointer(kNormalPointer);
  app.Status(CommunicationErrorText(app));
  return false;
}

void ClosePort(App& app, bool& result) {
  StopTimer(app);
  SerialPort& device = app.platform.port;
  app.state.PortIsOpen = device.IsOpen();
  result = true;
  if (app.state.PortIsOpen) {
    result = Try([&] { device.SetRts(false); });
    result = Try([&] { device.Close(); }) && result;
    if (result) app.state.PortIsOpen = false;
  }
  app.platform.events.Sleep(kRestMs);
}

void ClearInBuff(App& app, bool& result) {
  result = Try([&] { app.platform.port.DiscardInput(); });
}

int CalcCharGap(const App& app) {
  const int speed = NumberIn(app.state.Speed);
  const double exact = kGapBits / ((speed > 0 ? speed : 9600) / 1000.0);
  const double rounded = RoundHalfEven(exact);
  return static_cast<int>(rounded) + (exact == rounded ? 0 : 1);
}

void StopTimer(App& app) {
  if (app.frame != nullptr) app.frame->OneShotTimer().SetRunning(false);
}

int PortNumber(const App& app) { return NumberIn(app.state.PortNo); }

std::string CommunicationErrorText(const App& app) {
  const std::string& reason = app.state.PortFaultReason;
  return app.Text(text::kCommunicationError) + (reason.empty() ? "" : " " + reason);
}

}  // namespace vlt
