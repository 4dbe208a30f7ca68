// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/cset_devices.h"

#include <algorithm>
#include <array>

#include "files/file_report.h"
#include "files/settings_file.h"
#include "platform/port_settings.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kLookMs = 1000;
constexpr std::array kHeads = {text::kPortNo, text::kDevice, text::kAdapter};

// What an adapter tells of itself, in one line.
std::string AdapterText(const App& app, const PortInfo& port) {
  std::string serial;
  if (!port.serial_number.empty()) serial = FormatText(app.Text(text::kSerialNumber), {port.serial_number});
  std::string line;
  for (const std::string& part : {port.product, port.maker, serial}) {
    if (!part.empty()) line += (line.empty() ? "" : ", ") + part;
  }
  return line;
}

}  // namespace

CSetDevices::CSetDevices(App& app, FrmCSet& dialog)
    : FormPart(dialog),
      grdPorts(dialog, "grdPorts", kHighestPort + 1, static_cast<int>(kHeads.size())),
      lblDevices(dialog, "lblDevices"),
      cmbDevices(dialog, "cmbDevices"),
      cmdAssign(dialog, "cmdAssign"),
      tmrDevices(dialog, "tmrDevices"),
      app_(app),
      dialog_(dialog) {
  cmdAssign.on_click = [this] { cmdAssign_Click(); };
  tmrDevices.on_timer = [this] { tmrDevices_Timer(); };
  grdPorts.on_choose = [this] { dialog_.PortNo.SetListIndex(grdPorts.SelectedRow() - 1); };
  dialog.on_port = [this] {
    dialog_.PortNo.SetMark("");
    grdPorts.SetSelectedRow(dialog_.ChosenPort());
  };
}

void CSetDevices::FrmInit() {
  for (std::size_t i = 0; i < kHeads.size(); ++i) {
    grdPorts.SetCell(0, static_cast<int>(i), app_.Text(kHeads[i]));
  }
  lblDevices.SetCaption(app_.Text(text::kDevice));
  cmdAssign.SetCaption(app_.Text(text::kAssignPort));
}

void CSetDevices::Form_Load() {
  FrmInit();
  ports_ = app_.platform.process.Ports();
  Show();
  tmrDevices.SetInterval(kLookMs);
  tmrDevices.SetRunning(true);
}

// The settings file is looked at anew only when something came or went.
void CSetDevices::tmrDevices_Timer() {
  std::vector<PortInfo> ports = app_.platform.process.Ports();
  if (ports == ports_) return;
  ports_ = std::move(ports);
  Show();
}

void CSetDevices::Show() {
  for (int number = 1; number <= kHighestPort; ++number) ShowPort(number);
  grdPorts.SetSelectedRow(dialog_.ChosenPort());
  ShowDevices();
}

void CSetDevices::ShowPort(int number) {
  const std::string device = app_.platform.port.DeviceBehind(number);
  const std::string adapter = About(device, !GetPortDevice(app_, number).empty());
  grdPorts.SetRow(number,
                  std::array{"COM" + std::to_string(number), FrmCSet::DeviceText(app_, device), adapter});
}

// A device that the machine does not list (a terminal without hardware) is there when its file is, but the
// system has such files also for ports that it lacks: only one that somebody has assigned counts.
std::string CSetDevices::About(const std::string& device, bool assigned) const {
  const std::string target = app_.platform.files.Target(device);
  const auto port = std::find_if(ports_.begin(), ports_.end(), [&](const PortInfo& info) {
    return info.device == device || info.device == target;
  });
  if (port != ports_.end()) return AdapterText(app_, *port);
  const bool simulated = FrmCSet::DeviceText(app_, device) != device;
  const bool there = simulated || (assigned && app_.platform.files.Exists(device));
  return there ? "" : app_.Text(text::kNotConnected);
}

// The choice stays on its device, wherever that is in the list now.
void CSetDevices::ShowDevices() {
  const int chosen = cmbDevices.ListIndex();
  const std::string kept = chosen < 0 ? "" : offered_[static_cast<std::size_t>(chosen)];
  offered_.clear();
  std::vector<std::string> texts;
  const auto offer = [&](const std::string& device, const std::string& text) {
    offered_.push_back(device);
    texts.push_back(text);
  };
  for (const PortInfo& port : ports_) {
    const std::string adapter = AdapterText(app_, port);
    offer(port.device, port.device + (adapter.empty() ? "" : ": " + adapter));
  }
  offer(std::string(kSimulatorWord), app_.Text(text::kSimulatedMeter));
  offer("", app_.Text(text::kStandardDevice));
  cmbDevices.SetItems(texts);
  const auto again = std::find(offered_.begin(), offered_.end(), kept);
  if (chosen >= 0 && again != offered_.end()) {
    cmbDevices.SetListIndex(static_cast<int>(again - offered_.begin()));
  }
}

void CSetDevices::cmdAssign_Click() {
  const int chosen = cmbDevices.ListIndex();
  if (dialog_.ChosenPort() == 0) {
    app_.Status(app_.Text(text::kPortNotChosen));
    dialog_.SetFocus(dialog_.PortNo);
    return;
  }
  if (chosen < 0) {
    dialog_.SetFocus(cmbDevices);
    return;
  }
  const std::string& device = offered_[static_cast<std::size_t>(chosen)];
  const FileError written = SetPortDevice(app_, dialog_.ChosenPort(), device);
  if (written != FileError::kGood) ReportNotWritten(app_, CommPath(app_), written);
  Show();
}

}  // namespace vlt
