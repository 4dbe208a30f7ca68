// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_serial_port.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/serial_device.h"
#include "platform/port_settings.h"

namespace vlt {
namespace {

constexpr std::array kParities{QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity};

// Why opening failed. Qt has one word for a device that isn't allowed and one that is taken, and takes what
// is no serial device at all for one that refuses its settings.
PortFaultCode OpenFault(QSerialPort::SerialPortError error, const std::string& device) {
  const PortFaultCode refused = WhyRefused(device);
  switch (error) {
    case QSerialPort::DeviceNotFoundError:
    case QSerialPort::ResourceError:  // a device file of the system without a device behind it
      return PortFaultCode::kMissing;
    case QSerialPort::PermissionError:
    case QSerialPort::OpenError:
      return refused;
    case QSerialPort::UnsupportedOperationError:
      return refused == PortFaultCode::kMissing ? refused : PortFaultCode::kSettings;
    default:
      return refused == PortFaultCode::kMissing ? refused : PortFaultCode::kUnknown;
  }
}

// What an error of an open port means; nothing for those that are no fault of the line: an operation that the
// device lacks, a time-out, a call on a closed port.
std::optional<PortFaultCode> RunningFault(QSerialPort::SerialPortError error) {
  switch (error) {
    case QSerialPort::ResourceError:
      return PortFaultCode::kRemoved;
    case QSerialPort::WriteError:
      return PortFaultCode::kWrite;
    case QSerialPort::ReadError:
      return PortFaultCode::kRead;
    case QSerialPort::UnknownError:
      return PortFaultCode::kUnknown;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::string DeviceName(int number, const DeviceOf& device_of) {
  if (number < 1) return "";
  if (device_of)
    if (std::string device = device_of(number); !device.empty()) return device;
#ifdef _WIN32
  return "COM" + std::to_string(number);
#else
  return "/dev/ttyS" + std::to_string(number - 1);
#endif
}

QtSerialPort::QtSerialPort(DeviceOf device_of) : device_of_(std::move(device_of)) {
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                   [this](QSerialPort::SerialPortError error) { Notice(error); });
}

void QtSerialPort::Open(int number, const std::string& settings) {
  Close();
  fault_.reset();
  port_.setReadBufferSize(0);
  device_ = DeviceName(number, device_of_);
  if (device_.empty()) Refuse(PortFaultCode::kMissing);
  const auto parsed = ParsePortSettings(settings);
  if (!parsed) Refuse(PortFaultCode::kSettings);
  port_.setPortName(QString::fromStdString(device_));
  port_.setBaudRate(parsed->speed);
  port_.setDataBits(static_cast<QSerialPort::DataBits>(parsed->data_bits));
  port_.setStopBits(parsed->stop_bits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  // A pseudo-terminal that was killed while open refuses to open with a parity, so it is set behind.
  port_.setParity(QSerialPort::NoParity);
  OpenDevice();
  const auto parity = kParities.at(static_cast<std::size_t>(parsed->parity));
  if (!port_.setParity(parity) && !IsPseudoTerminal(Descriptor())) Refuse(PortFaultCode::kSettings);
}

void QtSerialPort::OpenDevice() {
  opening_ = true;
  const bool opened = port_.open(QIODevice::ReadWrite);
  opening_ = false;
  if (!opened) Refuse(OpenFault(port_.error(), device_));
  if (!ClaimDevice(Descriptor())) Refuse(PortFaultCode::kBusy);
}

void QtSerialPort::Close() {
  if (port_.isOpen()) port_.close();
}

// Leaves the port closed.
void QtSerialPort::Refuse(PortFaultCode code) {
  Close();
  throw PortFault(code, device_, code == PortFaultCode::kNoPermission ? GroupOf(device_) : "");
}

// Takes the first fault and closes. Qt repeats the error of a device that is gone without end, and a whole
// core would be spent on it.
void QtSerialPort::Notice(QSerialPort::SerialPortError error) {
  if (opening_ || fault_ || !port_.isOpen()) return;
  const auto fault = RunningFault(error);
  if (!fault) return;
  fault_ = IsHungUp(Descriptor()) ? PortFaultCode::kRemoved : *fault;
  // As an event of its own: the signal comes out of the notifier that closing deletes.
  QMetaObject::invokeMethod(
      &port_,
      [this] {
        if (fault_) Close();
      },
      Qt::QueuedConnection);
}

void QtSerialPort::Check() const {
  if (fault_) throw PortFault(*fault_, device_);
  if (!port_.isOpen()) throw PortFault(PortFaultCode::kNotOpen, "");
}

int QtSerialPort::Descriptor() const {
#ifdef _WIN32
  return -1;
#else
  return static_cast<int>(port_.handle());
#endif
}

void QtSerialPort::DiscardInput() {
  Check();
  port_.clear(QSerialPort::Input);
  Check();
}

void QtSerialPort::DiscardOutput() {
  Check();
  port_.clear(QSerialPort::Output);
  Check();
}

void QtSerialPort::Write(std::span<const std::uint8_t> bytes) {
  Check();
  const auto count = static_cast<qint64>(bytes.size());
  const qint64 taken = port_.write(reinterpret_cast<const char*>(bytes.data()), count);
  Check();
  if (taken != count) throw PortFault(PortFaultCode::kWrite, device_);
  port_.flush();  // without it nothing leaves before the event loop runs
  Check();
}

int QtSerialPort::BytesOut() {
  Check();
  return static_cast<int>(port_.bytesToWrite()) + DriverBytesOut(Descriptor());
}

int QtSerialPort::BytesIn() {
  Check();
  return static_cast<int>(port_.bytesAvailable());
}

std::uint8_t QtSerialPort::TakeByte() {
  Check();
  char byte = 0;
  if (port_.read(&byte, 1) != 1) throw PortFault(PortFaultCode::kRead, device_);
  return static_cast<std::uint8_t>(byte);
}

// A full buffer makes Qt leave the bytes with the system and not look at them any more.
void QtSerialPort::HoldInput(bool held) {
  Check();
  port_.setReadBufferSize(held ? std::max<qint64>(port_.bytesAvailable(), 1) : 0);
}

void QtSerialPort::AskPrompt() {
  Check();
  AskLowLatency(Descriptor());
}

// A device without the line reports it as an unsupported operation, which is no fault.
void QtSerialPort::SetRts(bool on) {
  Check();
  port_.setRequestToSend(on);
}

void QtSerialPort::SetDtr(bool on) {
  Check();
  port_.setDataTerminalReady(on);
}

}  // namespace vlt
