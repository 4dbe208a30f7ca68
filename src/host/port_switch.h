// SPDX-License-Identifier: GPL-3.0-or-later
// One port for both kinds of device: Open() chooses by what the COM number stands for.
#pragma once

#include "host/qt_serial_port.h"
#include "platform/clock.h"
#include "platform/event_queue.h"
#include "sim/simulated_port.h"

namespace vlt {

class PortSwitch : public SerialPort {
 public:
  PortSwitch(Clock& clock, EventQueue& events, DeviceOf device_of);

  void Open(int number, const std::string& settings) override;
  void Close() override { chosen_->Close(); }
  bool IsOpen() const override { return chosen_->IsOpen(); }
  std::string DeviceBehind(int number) override { return real_.DeviceBehind(number); }
  void DiscardInput() override { chosen_->DiscardInput(); }
  void DiscardOutput() override { chosen_->DiscardOutput(); }
  void Write(std::span<const std::uint8_t> bytes) override { chosen_->Write(bytes); }
  int BytesOut() override { return chosen_->BytesOut(); }
  int BytesIn() override { return chosen_->BytesIn(); }
  std::uint8_t TakeByte() override { return chosen_->TakeByte(); }
  void HoldInput(bool held) override { chosen_->HoldInput(held); }
  void AskPrompt() override { chosen_->AskPrompt(); }
  void SetRts(bool on) override { chosen_->SetRts(on); }
  void SetDtr(bool on) override { chosen_->SetDtr(on); }

  // The simulated line that is open, null while none is.
  sim::Line* OpenLine() { return simulated_.OpenLine(); }

 private:
  DeviceOf device_of_;
  Clock& clock_;
  sim::LineShelf shelf_;
  QtSerialPort real_;
  sim::SimulatedPort simulated_;
  SerialPort* chosen_ = &real_;
};

}  // namespace vlt
