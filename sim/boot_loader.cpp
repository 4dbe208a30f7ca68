// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/boot_loader.h"

#include <algorithm>
#include <utility>

namespace sim {

namespace {

constexpr std::uint8_t kStx = 0x02, kEndMark = 0x0C, kLineFeed = 0x0A;
constexpr std::uint8_t kVersionCode = 0xEB;
constexpr std::size_t kVersionLength = 20;
constexpr std::size_t kTail = 6;  // BCC, "Ed", CR, LF
constexpr std::size_t kOpenLength = 22, kCloseLength = 9, kReadLength = 8;
constexpr std::uint8_t kErased = 0xFF;
constexpr Micros kLongestGap = 1'000'000;

constexpr std::array<ModuleInfo, kModules> kModuleTable{{
    {"KRT_CNTL", "KRT_CNTL_KRT1SYS", 0, 0xFC, 0xEC, 3, 0x00030000},
    {"KRT_BOOT", "KRT_BOOT_KRT1SYS", 1280, 0xFF, 0xEF, 0, 0x00000000},
    {"KRT_UPSYS", "KRTUPSYS_KRT1SYS", 0, 0xFE, 0xEE, 1, 0xFFF80000},
    {"KRT_SPEED", "KRT_SPED_KRT1SYS", 0, 0xFD, 0xED, 2, 0xFFF80000},
}};

std::uint8_t CheckOf(std::span<const std::uint8_t> bytes) {
  std::uint8_t check = 0;
  for (std::uint8_t byte : bytes) check ^= byte;
  return check;
}

// Puts check and tail behind what stands in the frame.
void Finish(Bytes& frame) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  const std::uint8_t check = CheckOf(std::span(frame).subspan(1));
  frame.push_back(static_cast<std::uint8_t>(kDigits[check >> 4]));
  frame.push_back(static_cast<std::uint8_t>(kDigits[check & 15]));
  for (char c : {'E', 'd', '\r', '\n'}) frame.push_back(static_cast<std::uint8_t>(c));
}

bool HasTail(std::span<const std::uint8_t> frame) {
  static constexpr std::uint8_t kEnd[] = {'E', 'd', '\r', '\n'};
  return frame.size() >= 2 + kTail && std::ranges::equal(frame.last(4), kEnd);
}

bool HasCheck(std::span<const std::uint8_t> frame) {
  Bytes expected(frame.begin(), frame.end() - kTail);
  Finish(expected);
  return std::ranges::equal(expected, frame);
}

Bytes Acknowledge(char letter) {
  Bytes answer{kStx, static_cast<std::uint8_t>(letter)};
  Finish(answer);
  return answer;
}

Bytes Refuse(std::string_view text, bool end_mark) {
  Bytes answer{kStx, 'E'};
  answer.insert(answer.end(), text.begin(), text.end());
  if (end_mark) answer.push_back(kEndMark);
  answer.push_back('\r');
  answer.push_back(kLineFeed);
  return answer;
}

// What a meter is delivered with: the identification in its place, and bytes that tell where they stand.
Bytes FactoryImage(const ModuleInfo& module) {
  constexpr std::size_t kSize = 4096;
  Bytes image(kSize);
  for (std::size_t i = 0; i < kSize; ++i)
    image[i] = static_cast<std::uint8_t>(i ^ i >> 8 ^ module.number << 6);
  std::ranges::copy(module.identification, image.begin() + module.identification_at);
  return image;
}

}  // namespace

const std::array<ModuleInfo, kModules>& Modules() { return kModuleTable; }

BootLoader::BootLoader(const LoaderConfig& config) : config_(config) {
  limits_.fill(kLargestModule);
  for (std::size_t i = 0; i < kModules; ++i) images_[i] = FactoryImage(kModuleTable[i]);
}

bool BootLoader::IsOpenFrame(std::span<const std::uint8_t> bytes) {
  return bytes.size() == kOpenLength && bytes[0] == kStx && bytes[1] == 'A' && HasTail(bytes) &&
         HasCheck(bytes);
}

void BootLoader::Restart() {
  job_.reset();
  frame_.clear();
}

// Of the frame that is coming in. An image may hold any byte, so that only the open frame tells where it
// ends.
std::size_t BootLoader::WholeLength() const {
  if (frame_.size() < 2) return 0;
  if (frame_[1] == 'A') return kOpenLength;
  if (frame_[1] == 'C') return kCloseLength;
  const bool image = frame_[1] == 'B' && job_ && job_->work == Work::Download;
  return kReadLength + (image ? job_->length : 0);
}

std::optional<Bytes> BootLoader::Collect(std::uint8_t byte, Micros at) {
  if (at - last_ > kLongestGap) frame_.clear();
  last_ = at;
  if (frame_.empty() && byte != kStx) return std::nullopt;
  frame_.push_back(byte);
  if (frame_.size() != WholeLength()) return std::nullopt;
  return std::exchange(frame_, {});
}

std::uint8_t BootLoader::CodeOf(const Bytes& frame) const {
  if (frame[1] == 'A' || frame[1] == 'C') return frame[2];
  return job_ ? job_->code : 0;
}

std::string_view BootLoader::Judge(const Bytes& frame) const {
  if (!HasTail(frame)) return "FRAME ERROR";
  return HasCheck(frame) ? "" : "BCC ERROR";
}

std::string_view BootLoader::Open(const Bytes& frame) {
  job_.reset();
  const std::span<const std::uint8_t> fields(frame);
  const std::uint8_t code = frame[2], number = frame[3];
  const auto length = static_cast<std::size_t>(ReadBig(fields.subspan(4, 4)));
  const auto address = static_cast<std::uint32_t>(ReadBig(fields.subspan(8, 4)));
  if (ReadBig(fields.subspan(12, 4)) != 0x20202020) return "FRAME ERROR";
  if (code == kVersionCode) {
    if (number != 0 || address != 0) return "ADDRESS ERROR";
    if (length != kVersionLength) return "LENGTH ERROR";
    job_ = Job{.work = Work::Version, .code = code, .length = length};
    return "";
  }
  for (int i = 0; i < kModules; ++i) {
    const ModuleInfo& module = kModuleTable[static_cast<std::size_t>(i)];
    if (code != module.download && code != module.upload) continue;
    if (number != module.number || address != module.address) return "ADDRESS ERROR";
    if (length == 0 || length % 2 != 0 || length > limits_[static_cast<std::size_t>(i)])
      return "LENGTH ERROR";
    const Work work = code == module.download ? Work::Download : Work::Upload;
    job_ = Job{.work = work, .module = i, .code = code, .length = length};
    return "";
  }
  return "CODE ERROR";
}

std::string_view BootLoader::Take(const Bytes& frame) {
  if (!job_) return "SEQUENCE ERROR";
  if (job_->work == Work::Download) job_->received = Bytes(frame.begin() + 2, frame.end() - kTail);
  job_->read = true;
  return "";
}

std::string_view BootLoader::Close(const Bytes& frame, const LoaderQuirks& quirks, Answer& answer) {
  if (!job_ || !job_->read) return "SEQUENCE ERROR";
  if (frame[2] != job_->code) return "CODE ERROR";
  const Job job = *std::exchange(job_, std::nullopt);
  answer.ends_download = job.work == Work::Download;
  if (!answer.ends_download) return "";
  answer.delay = config_.flash_time;
  ++downloads_;
  if (!quirks.no_flash) images_[static_cast<std::size_t>(job.module)] = *job.received;
  return "";
}

// The version is a line of text; an image stands for itself, with erased flash behind its end.
Bytes BootLoader::Read() const {
  if (job_->work == Work::Version) {
    Bytes text(config_.version.begin(), config_.version.end());
    text.resize(kVersionLength, ' ');
    text.push_back('\r');
    text.push_back(kLineFeed);
    return text;
  }
  Bytes image = images_[static_cast<std::size_t>(job_->module)];
  image.resize(job_->length, kErased);
  return image;
}

BootLoader::Answer BootLoader::Serve(const Bytes& frame, const LoaderQuirks& quirks) {
  Answer answer;
  const char letter = CommandOf(frame);
  std::string_view error = Judge(frame);
  if (error.empty() && quirks.refuse) error = "DEVICE ERROR";
  if (error.empty()) {
    error = letter == 'A'   ? Open(frame)
            : letter == 'B' ? Take(frame)
            : letter == 'C' ? Close(frame, quirks, answer)
                            : "COMMAND ERROR";
  }
  if (!error.empty()) {
    job_.reset();
    answer = {.bytes = Refuse(error, !quirks.no_end_mark)};
  } else if (letter == 'B' && job_->work != Work::Download) {
    answer.bytes = Read();
    const auto place = static_cast<std::size_t>(quirks.spoil.value_or(-1));
    if (quirks.spoil && place < answer.bytes.size()) answer.bytes[place] ^= 0x01;
  } else {
    answer.bytes = Acknowledge(letter);
  }
  if (quirks.no_line_end && answer.bytes.back() == kLineFeed) answer.bytes.pop_back();
  return answer;
}

}  // namespace sim
