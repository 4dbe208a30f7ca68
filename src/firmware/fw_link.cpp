// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/fw_link.h"

#include <algorithm>
#include <array>

#include "firmware/sha256.h"
#include "link/port.h"
#include "link/port_return.h"
#include "platform/serial_firmware_port.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr const char* kSettings = "38400,N,8,1";
constexpr int kBitsPerSecond = 38400;
constexpr int kBitsPerByte = 10;

constexpr int kIntervalMs = 1000;
constexpr int kShortTotalMs = 10'000;
constexpr int kLongTotalMs = 300'000;
constexpr int kWriteMsPerByte = 1;

constexpr std::uint8_t kStx = 0x02;
constexpr std::uint8_t kCr = 0x0D;
constexpr std::uint8_t kLf = 0x0A;
constexpr std::uint8_t kBlank = 0x20;
constexpr std::uint8_t kFormFeed = 0x0C;  // ends the text of an error answer
constexpr std::uint8_t kPadding = 0xFF;
constexpr std::array<std::uint8_t, 4> kFrameEnd{'E', 'd', kCr, kLf};

constexpr int kDataFrame = 1;
constexpr std::size_t kFieldsAt = 2;
constexpr std::size_t kAddressAt = 8;
constexpr std::size_t kBlanksAt = 12;
constexpr std::size_t kOpenFieldsEnd = 16;
constexpr int kOpenFrameLength = 22;
constexpr int kAroundData = 8;  // STX, letter, check and end
constexpr std::size_t kErrorLetterAt = 1;
constexpr std::size_t kErrorTextEnd = 50;
constexpr const char* kErrorPrefix = "KRT_ERROR : ";

struct FailureRow {
  int number;
  const char* words;
};
constexpr FailureRow kFailures[] = {
    {1, "ERROR.NO01 : FILE OPEN ERROR"},  {2, "ERROR.NO02 : FILE READ ERROR"},
    {3, "ERROR.NO03 : FILE CLOSE ERROR"}, {4, "ERROR.NO04 : PORT OPEN ERROR"},
    {5, "KIND OF DOWNLOAD FILE MISTAKE"}, {6, "KIND OF VERIFICATION FILE MISTAKE"},
    {255, "ERROR.N255 : TIME OUT"},
};

std::uint8_t HexDigit(unsigned value) { return static_cast<std::uint8_t>("0123456789ABCDEF"[value & 0xF]); }

char Printable(char byte) { return byte > ' ' && byte < '\x7F' ? byte : ' '; }

void PutBigEndian(std::vector<std::uint8_t>& buffer, std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) buffer[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

}  // namespace

FwLink::FwLink(App& app)
    : FwPortName("COM" + app.state.PortNo),
      // An image of the greatest size still needs its frame round it.
      TxBuffer(kFwLargestImage + 1 + kAroundData),
      RxBuffer(kFwLargestImage + 1),
      app_(app) {}

FirmwarePort::Handle FwLink::Open(const std::string& portName, int total_ms) {
  const FirmwareTimeouts timeouts{kIntervalMs, total_ms, 0, 0, kWriteMsPerByte};
  const int port = ComNumber(portName);
  FollowAdapter(app_, port);
  const auto handle = app_.platform.firmware.Open(portName, kSettings, timeouts);
  if (handle == FirmwarePort::kNoHandle) {
    FailByPort(FwFault::kPort);
  } else {
    NoteOpened(app_, port);
  }
  return handle;
}

FirmwarePort::Handle FwLink::FwOpenShort(const std::string& portName) {
  return Open(portName, kShortTotalMs);
}

FirmwarePort::Handle FwLink::FwOpenLong(const std::string& portName) { return Open(portName, kLongTotalMs); }

void FwLink::FwClosePort() {
  app_.platform.firmware.Close(FwPortHandle);
  FwPortHandle = FirmwarePort::kNoHandle;
}

void FwLink::Fail(FwFault fault, const std::string& text) {
  LastFault = fault;
  LastFaultText = text;
}

void FwLink::FailByPort(FwFault fault) {
  const auto& why = app_.platform.firmware.LastFault();
  if (why && why->Code() == PortFaultCode::kRemoved) NoteLoss(app_);
  Fail(fault, why ? PortFaultText(app_, *why, ComNumber(FwPortName), kSettings) : "");
}

void FwLink::FwClearBuffers() {
  std::fill(TxBuffer.begin(), TxBuffer.end(), std::uint8_t{0});
  std::fill(RxBuffer.begin(), RxBuffer.end(), std::uint8_t{0});
  FwReceived = 0;
}

int FwLink::FwBuildLength(int kind) const {
  if (kind == kDataFrame) return static_cast<int>(FwImageLength) + kAroundData;
  const auto end = TxBuffer.begin() + static_cast<std::ptrdiff_t>(kFwLargestImage);
  constexpr std::array<std::uint8_t, 2> kLineEnd{kCr, kLf};
  const auto found = std::search(TxBuffer.begin(), end, kLineEnd.begin(), kLineEnd.end());
  return found == end ? 0 : static_cast<int>(found - TxBuffer.begin()) + 2;
}

// The index of the first field.
std::size_t FwLink::BeginFrame(char command) {
  Fail(FwFault::kNone);
  FwCommand = command;
  FwClearBuffers();
  TxBuffer[0] = kStx;
  TxBuffer[1] = static_cast<std::uint8_t>(command);
  return kFieldsAt;
}

void FwLink::EndFrame(std::size_t fields_end) {
  FwBcc = 0;
  for (std::size_t i = 1; i < fields_end; ++i) FwBcc = static_cast<std::uint8_t>(FwBcc ^ TxBuffer[i]);
  TxBuffer[fields_end] = HexDigit(FwBcc >> 4U);
  TxBuffer[fields_end + 1] = HexDigit(FwBcc);
  std::copy(kFrameEnd.begin(), kFrameEnd.end(),
            TxBuffer.begin() + static_cast<std::ptrdiff_t>(fields_end + 2));
}

void FwLink::FwSendOpen(std::uint8_t code, std::uint8_t module, std::int32_t address, bool& ok) {
  FwCode = code;
  std::size_t at = BeginFrame('A');
  TxBuffer[at++] = code;
  TxBuffer[at++] = module;
  PutBigEndian(TxBuffer, at, FwImageLength);
  PutBigEndian(TxBuffer, kAddressAt, static_cast<std::uint32_t>(address));
  for (at = kBlanksAt; at < kOpenFieldsEnd; ++at) TxBuffer[at] = kBlank;
  EndFrame(kOpenFieldsEnd);
  // Not by FwBuildLength: the bytes of a length such as 0D0AH are a CR LF inside the frame.
  FwFrameLength = kOpenFrameLength;
  FwPortHandle = FwOpenShort(FwPortName);
  FwExchange(ok);
  FwClosePort();
  if (!ok) return;
  FwPortHandle = FwOpenLong(FwPortName);
  ok = FwPortHandle != FirmwarePort::kNoHandle;
}

void FwLink::FwSendData(const std::string& filePath, bool& ok) {
  ok = false;
  std::string content;
  const bool read = app_.platform.files.Read(filePath, content) == FileError::kGood && !content.empty();
  const std::size_t padded = content.size() + content.size() % 2;
  const bool same = padded == FwImageLength && padded <= kFwLargestImage &&
                    (FwFileDigest.empty() || Sha256(content) == FwFileDigest);
  if (!read || !same) {
    Fail(read ? FwFault::kFileChanged : FwFault::kFile);
    FwClosePort();
    return;
  }
  const std::size_t at = BeginFrame('B');
  std::copy(content.begin(), content.end(), TxBuffer.begin() + static_cast<std::ptrdiff_t>(at));
  if (padded > content.size()) TxBuffer[at + content.size()] = kPadding;
  EndFrame(at + padded);
  FwFrameLength = FwBuildLength(kDataFrame);
  FwExchange(ok);
  if (!ok) FwClosePort();
}

void FwLink::FwSendRead(bool& ok) {
  EndFrame(BeginFrame('B'));
  FwFrameLength = FwBuildLength(0);
  FwExchange(ok);
  if (!ok) FwClosePort();
}

void FwLink::FwSendClose(std::uint8_t code, bool& ok) {
  std::size_t at = BeginFrame('C');
  TxBuffer[at++] = code;
  EndFrame(at);
  FwFrameLength = FwBuildLength(0);
  FwExchange(ok);
  FwClosePort();
}

void FwLink::FwExchange(bool& ok) {
  ok = false;
  if (FwPortHandle == FirmwarePort::kNoHandle) {
    if (LastFault == FwFault::kNone) Fail(FwFault::kPort);
    return;
  }
  if (!Transfer()) return;
  std::string text;
  FwCheckError(std::span(RxBuffer).first(FwReceived), text, ok);
  if (ok) return;
  Fail(FwFault::kDeviceError, text);
  app_.platform.dialogs.Ask({.text = text, .title = kDownloadToolTitle, .icon = MessageIcon::kInformation});
}

// One frame out, one answer in, and the answer is whole.
bool FwLink::Transfer() {
  FirmwarePort& port = app_.platform.firmware;
  if (!port.Write(FwPortHandle, std::span(TxBuffer).first(static_cast<std::size_t>(FwFrameLength)))) {
    FailByPort(FwFault::kWrite);
    return false;
  }
  if (!port.Read(FwPortHandle, std::span(RxBuffer).first(kFwLargestImage), FwReceived)) {
    FailByPort(FwFault::kRead);
    return false;
  }
  if (FwReceived == 0) {
    Fail(FwFault::kSilence);
    return false;
  }
  if (IsAnswerWhole()) return true;
  Fail(FwFault::kNoLineEnd);
  return false;
}

bool FwLink::IsAnswerWhole() const {
  const bool ends_a_line = FwDirection == kFwDownload || FwCode == kFwVersionCode;
  return !ends_a_line || RxBuffer[FwReceived - 1] == kLf;
}

void FwLink::FwCheckError(std::span<const std::uint8_t> answer, std::string& text, bool& clean) {
  text.clear();
  clean = answer.size() <= kErrorLetterAt || answer[kErrorLetterAt] != 'E';
  if (clean) return;
  text = kErrorPrefix;
  const std::size_t end = std::min(answer.size(), kErrorTextEnd);
  for (std::size_t i = kErrorLetterAt + 1; i < end && answer[i] != kFormFeed; ++i) {
    text += Printable(static_cast<char>(answer[i]));
  }
}

std::string FwDeviceText(std::string_view bytes) {
  std::string text = CutAtNul(bytes);
  std::transform(text.begin(), text.end(), text.begin(), Printable);
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string FwAddressText(std::int32_t address) {
  std::string text;
  for (int shift = 28; shift >= 0; shift -= 4) {
    text += static_cast<char>(HexDigit(static_cast<std::uint32_t>(address) >> shift));
  }
  return text;
}

std::string FwFailureText(int number) {
  const auto* row = std::find_if(std::begin(kFailures), std::end(kFailures),
                                 [&](const FailureRow& r) { return r.number == number; });
  return row == std::end(kFailures) ? "" : row->words;
}

std::int64_t FwLineMs(std::size_t bytes) {
  return static_cast<std::int64_t>(bytes) * kBitsPerByte * 1000 / kBitsPerSecond;
}

}  // namespace vlt
