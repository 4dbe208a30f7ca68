// SPDX-License-Identifier: GPL-3.0-or-later
// The serial port by Qt.
#pragma once

#include <QObject>
#include <QSerialPort>
#include <functional>
#include <optional>
#include <string>

#include "platform/serial_port.h"

namespace vlt {

// Tells what COM `number` stands for: a device path, "simulator ...", or an empty text for the system's own.
using DeviceOf = std::function<std::string(int number)>;

// The device behind COM `number`: what `device_of` says, else "/dev/ttyS(n-1)", or "COMn" on Windows. Empty
// for a number below 1.
std::string DeviceName(int number, const DeviceOf& device_of);

// Needs a running QCoreApplication; bytes move when its events run. A port is held exclusively. A device that
// goes away closes the port, and every operation gives the reason until the port is opened again.
class QtSerialPort : public SerialPort {
 public:
  explicit QtSerialPort(DeviceOf device_of);

  void Open(int number, const std::string& settings) override;
  void Close() override;
  bool IsOpen() const override { return port_.isOpen() && !fault_; }
  std::string DeviceBehind(int number) override { return DeviceName(number, device_of_); }

  void DiscardInput() override;
  void DiscardOutput() override;
  void Write(std::span<const std::uint8_t> bytes) override;
  int BytesOut() override;
  int BytesIn() override;
  std::uint8_t TakeByte() override;
  void HoldInput(bool held) override;
  void AskPrompt() override;
  void SetRts(bool on) override;
  void SetDtr(bool on) override;

 private:
  void OpenDevice();
  void Notice(QSerialPort::SerialPortError error);
  void Check() const;
  [[noreturn]] void Refuse(PortFaultCode code);
  int Descriptor() const;

  DeviceOf device_of_;
  std::string device_;
  QSerialPort port_;
  bool opening_ = false;
  std::optional<PortFaultCode> fault_;  // the first one since the port was opened
};

}  // namespace vlt
