// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/port_switch.h"

#include <utility>

namespace vlt {

PortSwitch::PortSwitch(Clock& clock, EventQueue& events, DeviceOf device_of)
    : device_of_(std::move(device_of)),
      clock_(clock),
      real_(device_of_),
      simulated_(clock, events, [this](int number) {
        return shelf_.Find(DeviceName(number, device_of_), clock_.NowMs() * 1000);
      }) {}

void PortSwitch::Open(int number, const std::string& settings) {
  chosen_->Close();
  if (sim::IsSimulator(DeviceName(number, device_of_)))
    chosen_ = &simulated_;
  else
    chosen_ = &real_;
  chosen_->Open(number, settings);
}

}  // namespace vlt
