// SPDX-License-Identifier: GPL-3.0-or-later
// The link to the device's boot loader: text-framed, one exchange a step, a whole module in one frame. Names,
// frames and time-outs are those of the boot loader's protocol.
//
// A frame: STX, command letter ("A" open, "B" data or read, "C" close), fields, the exclusive or of all bytes
// from the letter on as two hexadecimal digits, "Ed", CR LF.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/firmware_port.h"
#include "state/app.h"

namespace vlt {

// The title of the firmware tool's message boxes.
inline constexpr const char* kDownloadToolTitle = "Download Tool";

// F0000H: the most that one read takes, and the largest image of a module.
inline constexpr std::size_t kFwLargestImage = 0xF0000;
inline constexpr std::uint8_t kFwVersionCode = 0xEB;

inline constexpr char kFwDownload = '1';
inline constexpr char kFwUpload = '2';

// Why the last step failed.
enum class FwFault {
  kNone,
  kPort,         // the port could not be opened
  kFile,         // the file can't be read or is empty
  kFileChanged,  // the file is not the one that the run began with
  kWrite,        // the frame did not leave, or the port was lost meanwhile
  kRead,         // the port was lost while the answer was awaited
  kSilence,      // no answer
  kNoLineEnd,    // the answer breaks off: its last byte is no LF
  kDeviceError,  // the device answered with an error text
};

class FwLink {
 public:
  explicit FwLink(App& app);

  // FwPortHandle's time-outs: an open frame is answered within 10 s, everything behind it within 300 s. The
  // handle, or 0 when the port can't be opened.
  FirmwarePort::Handle FwOpenShort(const std::string& portName);
  FirmwarePort::Handle FwOpenLong(const std::string& portName);
  void FwClosePort();

  // Zeroes TxBuffer and RxBuffer.
  void FwClearBuffers();
  // Length of the frame in TxBuffer. `kind` 1: a data frame of FwImageLength bytes; else up to the first
  // CR LF.
  int FwBuildLength(int kind) const;

  // Open frame, for download and upload alike. FwImageLength and FwDirection are set before. On success the
  // port is open with the long time-outs, else it is closed.
  void FwSendOpen(std::uint8_t code, std::uint8_t module, std::int32_t address, bool& ok);
  // The whole file as data frame, an odd one with FFH behind it. The port stays open when it went well.
  // Nothing is sent when the file is not what the open frame has announced.
  void FwSendData(const std::string& filePath, bool& ok);
  // Asks for the image; RxBuffer holds it from index 0 on. The port is closed when it failed.
  void FwSendRead(bool& ok);
  // Close frame; the device finishes the operation. The port is closed in any case.
  void FwSendClose(std::uint8_t code, bool& ok);
  // One write of FwFrameLength bytes and one read. An error answer is shown in a box.
  void FwExchange(bool& ok);
  // `clean` unless the answer's second byte is "E"; `text` then is "KRT_ERROR : " and what the device says,
  // one character a byte.
  static void FwCheckError(std::span<const std::uint8_t> answer, std::string& text, bool& clean);

  std::string FwPortName;  // "COM3"
  FirmwarePort::Handle FwPortHandle = FirmwarePort::kNoHandle;
  int FwFrameLength = 0;            // bytes to send
  std::uint32_t FwImageLength = 0;  // of the module, padded to even
  std::uint8_t FwBcc = 0;
  char FwCommand = 0;              // letter of the last frame
  char FwDirection = kFwDownload;  // in an upload any byte may end an answer
  std::uint8_t FwCode = 0;         // of the last open frame
  std::vector<std::uint8_t> TxBuffer;
  std::vector<std::uint8_t> RxBuffer;

  std::size_t FwReceived = 0;  // bytes of the last answer
  std::string FwFileDigest;    // of the file that FwSendData may send; empty: any
  FwFault LastFault = FwFault::kNone;
  std::string LastFaultText;  // the port's reason, the device's words, or empty

 private:
  FirmwarePort::Handle Open(const std::string& portName, int total_ms);
  std::size_t BeginFrame(char command);
  void EndFrame(std::size_t fields_end);
  void Fail(FwFault fault, const std::string& text = {});
  void FailByPort(FwFault fault);
  bool Transfer();
  bool IsAnswerWhole() const;

  App& app_;
};

// What the device says in bytes, as a text: up to the first NUL, blanks for what can't be printed, no blanks
// at its end.
std::string FwDeviceText(std::string_view bytes);

// "FFF80000": an address as the open frame has it.
std::string FwAddressText(std::int32_t address);

// Words of the link's failure numbers (1 to 6 and 255); empty for any other number.
std::string FwFailureText(int number);

// How long the line needs for so many bytes, in milliseconds.
std::int64_t FwLineMs(std::size_t bytes);

}  // namespace vlt
