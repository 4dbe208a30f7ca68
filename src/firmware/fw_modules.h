// SPDX-License-Identifier: GPL-3.0-or-later
// The program modules of the device and their files: the image that is to be sent, the image that was read
// back.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "firmware/fw_link.h"

namespace vlt {

struct FwModule {
  const char* stem;            // of the file: "KRT_CNTL" for KRT_CNTL.bin
  const char* identification;  // 16 bytes of the file
  std::size_t position;        // where they stand in it
  const char* title;           // in the wait window
  std::uint8_t download_code;
  std::uint8_t upload_code;
  std::uint8_t number;
  std::int32_t address;  // in the device's memory
};

inline constexpr int kFwModules = 4;
// In the order of the check boxes, which is the order of a run.
std::span<const FwModule, kFwModules> FwModules();

// A file as it stood at one moment.
struct FwFileFacts {
  FileError error = FileError::kMissing;
  std::size_t size = 0;
  std::string digest;  // SHA-256; empty while the file can't be read
};

class FwFiles {
 public:
  FwFiles(App& app, FwLink& link) : app_(app), link_(link) {}

  // What the file is now, without keeping it.
  FwFileFacts Look(const std::string& path) const;

  // Reads the file into FwFileBuffer; `length` is its size, padded to even by FFH. Fails for a file that
  // can't be read, is empty, or is longer than F0000H bytes; Loaded() tells more.
  void FwLoadFile(const std::string& path, std::uint32_t& length, bool& ok);
  // The 16 bytes at `position` of the loaded file are `idText`; behind the file's end stand zeros.
  void FwCompareId(std::string_view idText, std::size_t position, bool& ok) const;

  // Keeps the first FwImageLength bytes of the answer as the read-back image. False when the answer is
  // shorter: the image then has zeros at its end and is no proof.
  bool TakeImage();
  // Compares the file with the read-back image over FwImageLength bytes. The file's end ends it with yes.
  void FwVerify(const std::string& path, bool& ok);
  // Writes the image to "<base>_<yyyymmddhhmmss>.bin". The path goes to SavedPath.
  FileError FwSaveImage(const std::string& base, std::span<const std::uint8_t> image);

  const FwFileFacts& Loaded() const { return loaded_; }

  std::vector<std::uint8_t> FwFileBuffer;
  bool FwPadded = false;  // the loaded file got a byte FFH at its end
  std::vector<std::uint8_t> FwImage;
  std::ptrdiff_t FwDifference = -1;  // index of the first byte that differs, or -1
  std::string SavedPath;

 private:
  App& app_;
  FwLink& link_;
  FwFileFacts loaded_;
};

}  // namespace vlt
