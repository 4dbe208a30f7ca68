// SPDX-License-Identifier: GPL-3.0-or-later
// The boot loader of a meter: what it answers to the frames of a program that loads and reads back modules.
// It is a pure engine, as the meter is: frames in, answers out, the caller says when.
//
//   open   STX 'A' code number length(4) address(4) four blanks BCC "Ed" CR LF
//   data   STX 'B' image BCC "Ed" CR LF            in a download
//   read   STX 'B' BCC "Ed" CR LF                  in an upload
//   close  STX 'C' code BCC "Ed" CR LF
//
// BCC is the exclusive or of all bytes behind STX, as two upper-case hexadecimal digits.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "sim/bytes.h"

namespace sim {

inline constexpr int kModules = 4;
inline constexpr std::size_t kLargestModule = 0xF0000;
inline constexpr int kLoaderBaud = 38400;  // 8 data bits, no parity, one stop bit

struct ModuleInfo {
  std::string_view name;
  std::string_view identification;
  std::uint32_t identification_at;
  std::uint8_t download, upload;  // codes of the open and close frames
  std::uint8_t number;
  std::uint32_t address;
};
const std::array<ModuleInfo, kModules>& Modules();

struct LoaderConfig {
  Micros flash_time = 2'000'000;                 // from the close frame of a download to its answer
  std::string version = "KRT1SYS  V01.00 SIM ";  // 20 characters
};

// What an armed fault makes the boot loader do wrong with one frame.
struct LoaderQuirks {
  bool refuse = false;       // an error answer
  bool no_end_mark = false;  // whose text has no 0CH behind it
  bool no_line_end = false;  // the answer ends ahead of its line feed
  bool no_flash = false;     // a download is acknowledged and not kept
  std::optional<int> spoil;  // this byte of an image read back is another
};

class BootLoader {
 public:
  struct Answer {
    Bytes bytes;
    Micros delay = 0;
    bool ends_download = false;  // the module is in the flash now
  };

  explicit BootLoader(const LoaderConfig& config = {});

  // True when these bytes are a whole open frame with a good BCC, whatever is in it: what wakes a boot
  // loader.
  static bool IsOpenFrame(std::span<const std::uint8_t> bytes);

  // Takes a byte. When it completes a frame, that frame; a second of silence within one throws it away.
  std::optional<Bytes> Collect(std::uint8_t byte, Micros at);
  // Command letter and code of the module in hand, for a frame that Collect() gave.
  char CommandOf(const Bytes& frame) const { return static_cast<char>(frame[1]); }
  std::uint8_t CodeOf(const Bytes& frame) const;
  // Does what the frame says, or answers what is wrong with it: "BCC ERROR", "FRAME ERROR", "CODE ERROR",
  // "ADDRESS ERROR", "LENGTH ERROR", "SEQUENCE ERROR", "COMMAND ERROR".
  Answer Serve(const Bytes& frame, const LoaderQuirks& quirks = {});
  // An open frame was good, and its close frame hasn't come.
  bool IsBusy() const { return job_.has_value(); }
  // Power off and on: what is in the flash stays.
  void Restart();

  // What is in the flash, in the order of Modules(). A module is as long as the last download was.
  const Bytes& Image(int module) const { return images_[static_cast<std::size_t>(module)]; }
  void SetImage(int module, Bytes image) { images_[static_cast<std::size_t>(module)] = std::move(image); }
  // The most that a module may have.
  void SetLimit(int module, std::size_t bytes) { limits_[static_cast<std::size_t>(module)] = bytes; }
  int Downloads() const { return downloads_; }
  LoaderConfig& config() { return config_; }

 private:
  enum class Work { Download, Upload, Version };
  // An open module.
  struct Job {
    Work work = Work::Download;
    int module = 0;
    std::uint8_t code = 0;
    std::size_t length = 0;
    std::optional<Bytes> received = std::nullopt;
    bool read = false;
  };

  std::size_t WholeLength() const;
  // These give an error text, or an empty one.
  std::string_view Judge(const Bytes& frame) const;
  std::string_view Open(const Bytes& frame);
  std::string_view Take(const Bytes& frame);
  std::string_view Close(const Bytes& frame, const LoaderQuirks& quirks, Answer& answer);
  Bytes Read() const;

  LoaderConfig config_;
  std::array<Bytes, kModules> images_;
  std::array<std::size_t, kModules> limits_{};
  std::optional<Job> job_;
  Bytes frame_;
  Micros last_ = 0;
  int downloads_ = 0;
};

}  // namespace sim
