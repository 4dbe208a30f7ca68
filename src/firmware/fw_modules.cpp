// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/fw_modules.h"

#include <algorithm>
#include <array>

#include "files/whole_file.h"
#include "firmware/sha256.h"

namespace vlt {
namespace {

constexpr std::uint8_t kPadding = 0xFF;

constexpr std::array<FwModule, kFwModules> kModules{{
    {"KRT_CNTL", "KRT_CNTL_KRT1SYS", 0, "SYSTEM EXECUTION MODULE", 0xFC, 0xEC, 3, 0x00030000},
    {"KRT_BOOT", "KRT_BOOT_KRT1SYS", 1280, "BOOT MODULE", 0xFF, 0xEF, 0, 0x00000000},
    {"KRT_UPSYS", "KRTUPSYS_KRT1SYS", 0, "UPDATE MODULE OF SOFTWARE", 0xFE, 0xEE, 1, -0x80000},
    {"KRT_SPEED", "KRT_SPED_KRT1SYS", 0, "HIGH-SPEED EXECUTION MODULE", 0xFD, 0xED, 2, -0x80000},
}};

FwFileFacts Facts(const FileError& error, const std::string& content) {
  return {error, content.size(), error == FileError::kGood ? Sha256(content) : ""};
}

}  // namespace

std::span<const FwModule, kFwModules> FwModules() { return kModules; }

FwFileFacts FwFiles::Look(const std::string& path) const {
  std::string content;
  const FileError error = app_.platform.files.Read(path, content);
  return Facts(error, content);
}

void FwFiles::FwLoadFile(const std::string& path, std::uint32_t& length, bool& ok) {
  FwFileBuffer.assign(kFwLargestImage + 1, 0);
  FwPadded = false;
  length = 0;
  std::string content;
  const FileError error = app_.platform.files.Read(path, content);
  loaded_ = Facts(error, content);
  const std::size_t padded = content.size() + content.size() % 2;
  if (loaded_.error == FileError::kGood && padded > kFwLargestImage) loaded_.error = FileError::kTooLarge;
  ok = loaded_.error == FileError::kGood && !content.empty();
  if (!ok) return;
  std::copy(content.begin(), content.end(), FwFileBuffer.begin());
  FwPadded = padded > content.size();
  if (FwPadded) FwFileBuffer[content.size()] = kPadding;
  length = static_cast<std::uint32_t>(padded);
}

void FwFiles::FwCompareId(std::string_view idText, std::size_t position, bool& ok) const {
  ok = position + idText.size() <= FwFileBuffer.size() &&
       std::equal(idText.begin(), idText.end(), FwFileBuffer.begin() + static_cast<std::ptrdiff_t>(position),
                  [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

bool FwFiles::TakeImage() {
  const auto& answer = link_.RxBuffer;
  const std::size_t length = std::min<std::size_t>(link_.FwImageLength, answer.size());
  FwImage.assign(answer.begin(), answer.begin() + static_cast<std::ptrdiff_t>(length));
  return link_.FwReceived >= length;
}

void FwFiles::FwVerify(const std::string& path, bool& ok) {
  FwDifference = -1;
  std::string content;
  ok = app_.platform.files.Read(path, content) == FileError::kGood;
  if (!ok) return;
  const std::size_t count = std::min(content.size(), FwImage.size());
  const auto [file, image] =
      std::mismatch(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(count), FwImage.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
  const auto same = image - FwImage.begin();
  ok = same == static_cast<std::ptrdiff_t>(count);
  if (!ok) FwDifference = same;
}

FileError FwFiles::FwSaveImage(const std::string& base, std::span<const std::uint8_t> image) {
  SavedPath = base + "_" + StampText(app_.platform.clock.Now()) + ".bin";
  return WriteWhole(app_.platform.files, SavedPath, std::string(image.begin(), image.end()), false);
}

}  // namespace vlt
