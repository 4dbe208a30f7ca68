// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/serial_firmware_port.h"

#include <algorithm>
#include <charconv>

namespace vlt {
namespace {

constexpr std::string_view kPrefix = "COM";
// A driver tells only now and then how much has left, a USB adapter every 16 ms; a short frame would seem
// stuck by then. Bytes that go on leaving are no time-out.
constexpr int kDriverReportMs = 100;

// How long to wait before looking again: short near the end, seldom while a whole module is on its way.
constexpr int kBytesPerLook = 8;
constexpr int kLongestLookMs = 50;

std::int64_t Total(int constant, int per_byte, std::size_t bytes) {
  return constant + static_cast<std::int64_t>(per_byte) * static_cast<std::int64_t>(bytes);
}

}  // namespace

int ComNumber(const std::string& name) {
  if (!name.starts_with(kPrefix)) return 0;
  int number = 0;
  const char* end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data() + kPrefix.size(), end, number);
  return error == std::errc() && stop == end && number > 0 ? number : 0;
}

template <class Operation>
bool SerialFirmwarePort::Try(Operation&& operation) {
  fault_.reset();
  try {
    return operation();
  } catch (const PortFault& fault) {
    fault_ = fault;
    return false;
  }
}

FirmwarePort::Handle SerialFirmwarePort::Open(const std::string& name, const std::string& settings,
                                              const FirmwareTimeouts& timeouts) {
  timeouts_ = timeouts;
  const bool opened = Try([&] {
    // Of the two links only one may have the port.
    if (port_.IsOpen()) throw PortFault(PortFaultCode::kBusy, "");
    port_.Open(ComNumber(name), settings);
    open_ = ++last_;
    port_.DiscardInput();
    return true;
  });
  if (!opened) {
    const auto why = fault_;
    Close(open_);
    fault_ = why;
  }
  return open_;
}

bool SerialFirmwarePort::Write(Handle handle, std::span<const std::uint8_t> bytes) {
  fault_.reset();
  if (handle == kNoHandle || handle != open_) return false;
  const auto until = clock_.NowMs() + Total(timeouts_.write_constant, timeouts_.write_per_byte, bytes.size());
  return Try([&] {
    port_.Write(bytes);
    return WaitUntilSent(until);
  });
}

bool SerialFirmwarePort::WaitUntilSent(std::int64_t until) {
  int left = port_.BytesOut();
  std::int64_t patience = std::max(until, clock_.NowMs() + kDriverReportMs);
  while (left > 0) {
    const std::int64_t now = clock_.NowMs();
    if (now >= patience) return false;
    events_.GiveWay(now + std::clamp(left / kBytesPerLook, 1, kLongestLookMs));
    const int now_left = port_.BytesOut();
    if (now_left < left) patience = std::max(until, clock_.NowMs() + kDriverReportMs);
    left = now_left;
  }
  return true;
}

bool SerialFirmwarePort::Read(Handle handle, std::span<std::uint8_t> into, std::size_t& received) {
  received = 0;
  fault_.reset();
  if (handle == kNoHandle || handle != open_) return false;
  const auto until = clock_.NowMs() + Total(timeouts_.read_constant, timeouts_.read_per_byte, into.size());
  return Try([&] {
    ReadUntil(until, into, received);
    return true;
  });
}

void SerialFirmwarePort::ReadUntil(std::int64_t until, std::span<std::uint8_t> into, std::size_t& received) {
  std::int64_t end = until;
  for (;;) {
    const int there = port_.BytesIn();
    for (int i = 0; i < there && received < into.size(); ++i) into[received++] = port_.TakeByte();
    const std::int64_t now = clock_.NowMs();
    if (there > 0) end = std::min(until, now + timeouts_.read_interval);
    if (received == into.size() || now >= end) return;
    events_.GiveWay(end);
  }
}

void SerialFirmwarePort::Close(Handle handle) {
  if (handle == kNoHandle || handle != open_) return;
  open_ = kNoHandle;
  Try([&] {
    port_.Close();
    return true;
  });
}

}  // namespace vlt
